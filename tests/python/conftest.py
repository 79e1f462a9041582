import os
import pathlib
import warnings

import pytest

import cephtool

SAMPLES = pathlib.Path(os.environ["SAMPLES"])


@pytest.fixture(scope="session")
def samples():
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", cephtool.Remark)
        return cephtool.read(SAMPLES)


@pytest.fixture(scope="session")
def class2(samples):
    return next(case for case in samples if case.file.endswith("lateral-class2.json"))
