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


def program_file(folder, *arguments):
    program(*arguments, "-o", folder / "by_program.txt")
    return (folder / "by_program.txt").read_bytes().decode("cp932")


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
    cases = [case for case in samples if case.kind == analysis.case_kind]
    frankfort = ["Po", "Or", "S", "N"] if analysis.case_kind == "lateral" else []  # what errors of landmarks lie along
    names = list(dict.fromkeys(analysis.landmarks + frankfort))
    points = np.stack([case.points(names) for case in cases])
    patients = dict(landmarks=names, mm_per_pixel=[case.mm_per_pixel for case in cases], sex=[case.sex for case in cases],
                    age=[case.age for case in cases], dental_stage=[case.dental_stage for case in cases])
    values = analysis.measure_points(points, **patients, error=True)
    assert same(analysis.measure_points(points, **patients, norms=False).value, values.value)
    frame = analysis.measure(cases, error=True)
    for part in ("value", "mean", "sd", "deviation", "error", "deviation_error", "share"):
        assert same(getattr(values, part).ravel(), frame[part]), part
    assert same(values.assumed.ravel(), frame.assumed != "")
    assert list(frame.mostly) == [[*names, ""][place] for place in values.mostly.ravel()]
    for place, item in enumerate(analysis.items):
        try:
            formula = cephtool.formula(item.formula, analysis.case_kind)
        except cephtool.Error:  # of norms, texts or other items
            continue
        of_formula = formula(np.stack([case.points(formula.landmarks) for case in cases]),
                             mm_per_pixel=patients["mm_per_pixel"])
        assert same(of_formula, values.value[:, place]), item


@pytest.mark.parametrize("population", ["", "Japanese"])
def test_errors_and_words_are_those_of_the_program(population, samples):
    cases = [case.replace(population=population or None) for case in samples if case.file.endswith(".json")]
    told = json.loads(program("analyze", *sorted(SAMPLES.glob("*.json")), "--error", "--format", "json",
                              *(("--population", population) if population else ())))["cases"]
    frame = cephtool.measure(cases, error=True)
    measured = dict(iter(frame.groupby(["case", "analysis"], sort=False)))
    assert len(told) == len(cases) >= 2
    for place, case in enumerate(told):
        for of_analysis in case["analyses"]:
            rows = measured[place, of_analysis["file"].removesuffix(".txt")]
            assert len(rows) >= len(of_analysis["items"])
            for item, (_, row) in zip(of_analysis["items"], rows.iterrows()):
                error = item.get("error") or {"value": None, "text": ""}
                assert (row["item"], row["mostly"], row["assumed"], row["error_text"]) == (
                    item["name"], error.get("mostly", ""), " ".join(error.get("assumed", ())), error["text"])
                assert same([row[name] for name in ("value", "mean", "sd", "deviation", "error", "deviation_error")],
                            [np.nan if value is None else value for value in
                             (*(item[name] for name in ("value", "mean", "sd", "deviation")), error["value"],
                              error.get("deviation"))])


def test_an_analysis_of_ones_own_is_the_one_that_the_program_composes(class2, tmp_path):
    steiner = cephtool.analysis("Steiner")
    ours = cephtool.compose("Ours", (steiner, ["SNB", "SNA"]), cephtool.analysis("Wits"), path=tmp_path / "ours.txt")
    assert (tmp_path / "ours.txt").read_bytes().decode("cp932") == program_file(
        tmp_path, "compose", "--title", "Ours", "Steiner:SNB,SNA", "Wits")
    frame, own = steiner.measure(class2).set_index("item"), ours.measure(class2).set_index("item")
    for name in ("SNA", "SNB"):
        assert same(own.loc[name, ["value", "mean", "sd", "deviation"]], frame.loc[name, ["value", "mean", "sd", "deviation"]])
    assert cephtool.Analysis.read(tmp_path / "ours.txt").items == ours.items and "AO-BO" in own.index
    with pytest.raises(cephtool.Error):
        cephtool.compose("Odd", (steiner, "SNA"), cephtool.analysis("Ricketts", kind="frontal"))


def test_a_study_is_that_of_the_program(tmp_path):
    paths = SAMPLES / "readings-first.tps", SAMPLES / "readings-second.tps"
    command = "reliability", paths[0], "--second", paths[1], "--analysis", "Steiner"
    readings = [cephtool.read(path) for path in paths]
    try:
        study = cephtool.reliability(readings, [cephtool.analysis("Steiner")])
    except cephtool.Error as error:
        pytest.skip(str(error))
    for format, text in (("json", study.json), ("csv", study.csv), ("table", study.table)):
        assert program(*command, "--format", format).replace("\r\n", "\n") == text.replace("\r\n", "\n")
    rows = json.loads(study.json)["rows"]
    both = list(study.items.technical_error) + list(study.landmarks.technical_error)
    assert sorted(both) == sorted(row["technical_error"] for row in rows)
    assert study.values("SNA").shape == (10, 2) and study.places("A").shape == (10, 2, 2)
    named = [{f"film {place}": case for place, case in enumerate(cases)} for cases in readings]
    assert cephtool.reliability(named, [cephtool.analysis("Steiner")]).json == study.json
    program(*command, "--write-errors", tmp_path / "program.txt")
    study.errors.write(tmp_path / "own.txt")
    own, by_program = ([line for line in (tmp_path / name).read_bytes().splitlines() if not line.startswith(b";")]
                       for name in ("own.txt", "program.txt"))
    assert own == by_program and len(own) > 10
    assert cephtool.LandmarkErrors.read(tmp_path / "own.txt").lateral["A"].along == pytest.approx(
        study.errors.lateral["A"].along, abs=0.005)
    for axes in (study.plot_agreement("SNA"), study.plot_places("A")):
        assert len(axes.collections[0].get_offsets()) in (10, 20)
    with pytest.warns(cephtool.Remark, match="1 film is left out"):
        cephtool.reliability([readings[0][1:], readings[1]], [])


def test_findings_on_growth_are_those_of_the_program(class2):
    rows = csv.DictReader(program("stage", SAMPLES / "lateral-class2.json", "--format", "csv").splitlines())
    told = {row["what"]: row for row in rows}
    for finding in cephtool.growth(class2):
        years = told[finding.what]["years"]
        assert finding.years == (float(years) if years else None) and finding.name == told[finding.what]["name"]
