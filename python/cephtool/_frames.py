"""What analyses say about cases, as data frames."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any, Optional, Union

import numpy as np
import numpy.typing as npt

from cephtool import _engine
from cephtool._arrays import age_years
from cephtool._errors import warn
from cephtool.cases import Case
from cephtool.landmark_errors import Errors, errors_wanted

if TYPE_CHECKING:
    import pandas

    from cephtool.analyses import Analysis

_OF_ERRORS = ("error", "deviation_error", "mostly", "share", "assumed", "shown", "error_text")


def measured(cases: Union[Case, Iterable[Case]], analyses: list[Analysis], error: Errors, form: str,
             band: Optional[int], language: str, by_population: bool = False) -> pandas.DataFrame:
    """As `cephtool.measure`; `by_population`, each case by the variants with norms of its population alone."""
    import pandas
    if language not in ("en", "ja"):
        raise ValueError(f'the language is "en" or "ja", not {language!r}')
    if form not in ("long", "wide"):
        raise ValueError(f'the form is "long" or "wide", not {form!r}')
    all_cases = [cases] if isinstance(cases, Case) else list(cases)
    columns, remarks = _engine.measure([case._record for case in all_cases],
                                       [analysis._analysis for analysis in analyses], band, errors_wanted(error),
                                       by_population)
    codes = _remarked(all_cases, analyses, remarks)
    if form == "wide":
        return _wide(pandas, all_cases, analyses, columns, codes, not by_population)
    items = [[(item[0], item[1], item[5] or item[0]) for item in analysis._analysis.items] for analysis in analyses]
    whose_items = list(zip(columns["analysis"].tolist(), columns["item"].tolist()))
    return pandas.DataFrame({
        "case": columns["case"],
        "name": [all_cases[place].name for place in columns["case"].tolist()],
        "analysis": [analyses[analysis].name for analysis, _ in whose_items],
        "item": [items[analysis][item][0] for analysis, item in whose_items],
        "label": [items[analysis][item][2 if language == "ja" else 0] for analysis, item in whose_items],
        "unit": [items[analysis][item][1] for analysis, item in whose_items],
        **{name: columns[name]
           for name in ("value", "text", "mean", "sd", "deviation", "missing", "reason", *_OF_ERRORS)
           if name in columns},
        "remarks": ["; ".join(codes[case].get("", []) + codes[case].get(analyses[analysis].name, []))
                    for case, (analysis, _) in zip(columns["case"].tolist(), whose_items)],
    })


def _remarked(cases: list[Case], analyses: list[Analysis],
              remarks: list[tuple[int, str, str, str]]) -> list[dict[str, list[str]]]:
    """Warns of what came up while measuring, once a code. Gives the codes of each case: of analyses, and of "", all."""
    codes: list[dict[str, list[str]]] = [{"": [code for code, _ in case.remarks]} for case in cases]
    first: dict[str, str] = {}
    count: dict[str, int] = {}
    for place, of_analysis, code, text in remarks:
        if code:
            codes[place].setdefault(of_analysis, []).append(code)
        whose = cases[place].name or cases[place].file or f"case {place}"
        first.setdefault(code, ": ".join(part for part in (whose, of_analysis, text) if part))
        count[code] = count.get(code, 0) + 1
    for code, text in first.items():
        if code != "errors":  # says only what was asked for
            warn(text + (f" ({count[code] - 1} more of this kind)" if count[code] > 1 else ""), code, 5)
    return codes


def _of_cases(count: int, columns: dict[str, Any], name: str, rows: npt.NDArray[np.intp]) -> Any:
    """The rows of a column at the places of their cases; NaN, or "", for others."""
    numbers = isinstance(columns[name], np.ndarray)
    values: Any = np.full(count, np.nan) if numbers else np.full(count, "", dtype=object)
    values[columns["case"][rows]] = columns[name][rows] if numbers else [columns[name][row] for row in rows]
    return values


def _wide(pandas: Any, cases: list[Case], analyses: list[Analysis], columns: dict[str, Any],
          codes: list[dict[str, list[str]]], with_variants: bool) -> Any:
    table: dict[str, Any] = {"name": [case.name for case in cases], "kind": [case.kind for case in cases],
                             "sex": [case.sex for case in cases], "age": [age_years(case.age) for case in cases],
                             "remarks": ["; ".join(f"{whose}:{code}" if whose else code
                                                   for whose, all_codes in of_case.items() for code in all_codes)
                                         for of_case in codes]}
    for number, analysis in enumerate(analyses):
        prefix = ("" if analysis.kind == "lateral" else analysis.kind + ":") + analysis.name
        of_analysis = columns["analysis"] == number
        if analysis.variant_of and not with_variants and not of_analysis.any():
            continue
        for item, (name, _, _, heading, *_) in enumerate(analysis._analysis.items):
            if heading:
                continue
            rows = np.flatnonzero(of_analysis & (columns["item"] == item))
            column, copy = f"{prefix}:{name}", 2
            while column in table:
                column, copy = f"{prefix}:{name} ({copy})", copy + 1
            table[column] = _of_cases(len(cases), columns, "text" if any(columns["text"][row] for row in rows)
                                      else "value", rows)
            for part in ("error", "mostly", "assumed"):
                if part in columns:
                    table[f"{column}:{part}"] = _of_cases(len(cases), columns, part, rows)
    return pandas.DataFrame(table)
