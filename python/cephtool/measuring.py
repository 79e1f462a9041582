"""Cases measured by analyses."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Optional, Union

from cephtool._frames import measured
from cephtool.analyses import Analysis
from cephtool.cases import Case
from cephtool.folders import shipped_folder
from cephtool.landmark_errors import Errors

if TYPE_CHECKING:
    import pandas


def measure(cases: Union[Case, Iterable[Case]], analyses: Optional[Iterable[Analysis]] = None, *,
            error: Errors = False, form: str = "long", band: Optional[int] = None,
            language: str = "en") -> pandas.DataFrame:
    """What analyses say about cases. The numbers are those of ``cephtool analyze`` and ``cephtool batch``.

    Parameters
    ----------
    cases : Case or iterable of Case
        Each is measured by the analyses for its kind.
    analyses : iterable of Analysis, optional
        Without it all that ship, with norms of each case's population (`Case.population`) where there are any.
    error : bool or LandmarkErrors
        Whether values have standard errors: from those of the landmarks that ship, or from these.
    form : {"long", "wide"}
        A row for each item of a case, or one for each case.
    band : int, optional
        Code of the norms' columns, in place of the one that age, sex and dental stage lead to.
    language : {"en", "ja"}
        Of ``label``.

    Returns
    -------
    pandas.DataFrame
        Long: ``case`` (place, from 0), ``name``, ``analysis``, ``item``, ``label`` (its name to be shown), ``unit``,
        ``value``, ``text`` (of an item that has one in place of a value), ``mean``, ``sd``, ``deviation`` (in SD),
        ``missing`` (landmarks that the value lacks, blanks between), ``reason`` (why there is no value although none is
        missing), ``remarks`` (codes, "; " between). With errors also ``error`` (standard error of the value, in its
        unit), ``deviation_error`` (in SD), ``mostly`` (the landmark that contributes most), ``share`` (of the variance
        that it makes up), ``assumed`` (landmarks whose error nobody measured), ``shown`` (``"82.8 ± 1.2"``, in
        parentheses where it rests on assumed ones), ``error_text`` (what the program says of the error, or why
        there is none).
        Wide: ``name``, ``kind``, ``sex``, ``age``, ``remarks``, and a column ``"ANALYSIS:ITEM"`` with the values of each
        item, ``"KIND:ANALYSIS:ITEM"`` of others than lateral ones. With errors also ``"ANALYSIS:ITEM:error"``,
        ``":mostly"`` and ``":assumed"``. A sheet with norms of a population has columns of its own.

    Warns
    -----
    Remark
        How norms fit the patients, and landmarks that lie improbably far from where the others expect them: of each
        code the first.
    """
    if analyses is None:
        return measured(cases, shipped_folder().analyses, error, form, band, language, by_population=True)
    return measured(cases, list(analyses), error, form, band, language)
