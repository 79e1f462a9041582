"""What the program and the package say is the same, to the last bit."""
import csv
import json
import os
import subprocess

import numpy as np
import pytest

import cephtool
from conftest import SAMPLES

pytestmark = pytest.mark.filterwarnings("ignore::cephtool.Remark")


def program(*arguments):
    return subprocess.run([os.environ["CEPHTOOL"], *map(str, arguments)], capture_output=True, check=True).stdout.decode()


def same(a, b):
    return np.array_equal(np.asarray(a, dtype=float), np.asarray(b, dtype=float), equal_nan=True)


def test_every_item_of_every_analysis_on_all_samples(samples, class2, tmp_path):
    frame = cephtool.measure(samples)
    table = tmp_path / "all.jsonl"
    program("batch", SAMPLES, "--with", "norms", "--with", "deviations", "-o", table)
    lines = [json.loads(line) for line in table.read_text().splitlines()]
    wide = cephtool.measure(samples, list(cephtool.Folder()), form="wide")
    beside = (":mean", ":sd", ":deviation", ":population")
    values = [key for key in lines[0] if ":" in key and not key.endswith(beside)]
    assert len(lines) == len(samples) and len(values) > 250
    assert set(values) <= set(wide.columns)
    for name in values:
        told = [line[name] for line in lines]
        if wide[name].dtype == object:
            assert list(wide[name]) == [text or "" for text in told]
        else:
            assert same(wide[name], [np.nan if value is None else value for value in told]), name
    lateral = frame[frame.analysis == "Steiner"]
    for part in ("mean", "sd", "deviation"):
        told = [line[f"Steiner:{item}:{part}"] for line in lines if line["kind"] == "lateral" for item in
                lateral.item.unique()]
        assert same(lateral[part], [np.nan if value is None else value for value in told]), part
    analyzed = json.loads(program("analyze", SAMPLES / "lateral-class2.json", "--analysis", "Kim", "--format", "json"))
    told = {item["name"]: item["value"] for item in analyzed["cases"][0]["analyses"][0]["items"]}
    assert told == dict(cephtool.analysis("Kim").measure(class2)[["item", "value"]].values)


@pytest.mark.parametrize("analysis", list(cephtool.Folder()), ids=repr)
def test_arrays_give_what_cases_give(analysis, samples):
    cases = [case for case in samples if case.kind == analysis.kind]
    points = np.stack([case.points(analysis.landmarks) for case in cases])
    patients = dict(mm_per_pixel=[case.mm_per_pixel for case in cases], sex=[case.sex for case in cases],
                    age=[case.age for case in cases], dental_stage=[case.dental_stage for case in cases])
    values = analysis.measure_points(points, **patients)
    assert same(analysis.measure_points(points, **patients, norms=False).value, values.value)
    frame = analysis.measure(cases)
    for part in ("value", "mean", "sd", "deviation"):
        assert same(getattr(values, part).ravel(), frame[part]), part


def test_findings_on_growth_are_those_of_the_program(class2):
    rows = csv.DictReader(program("stage", SAMPLES / "lateral-class2.json", "--format", "csv").splitlines())
    told = {row["what"]: row for row in rows}
    for finding in cephtool.growth(class2):
        years = told[finding.what]["years"]
        assert finding.years == (float(years) if years else None) and finding.name == told[finding.what]["name"]
