"""speed_table.py FOLDER: runs the benchmarks of a build and prints what docs/speed.md holds below its mark: Markdown, with
machine, day and load. Each row is one measure; rivals of one run stand side by side, with how many times as long they take."""
import datetime, json, os, pathlib, platform, re, subprocess, sys

build = pathlib.Path(sys.argv[1])
options = ["--benchmark_repetitions=3", "--benchmark_report_aggregates_only", "--benchmark_format=json", *sys.argv[2:]]

RIVALS = {"CLibrary", "Inline", "Eigen", "Text", "MuParser", "Plain", "OpenCV", "Memcpy", "LibExif", "PlainCairo", "CairoBezier"}


def shown(ns):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3), ("ns", 1)):
        if ns >= size or unit == "ns":
            return f"{ns / size:.3g} {unit}"


def rows_of(program):
    """{measure: {who: nanoseconds of the processor}}, in the order of the program."""
    rows, scales = {}, {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    for run in json.loads(subprocess.check_output([program, *options], text=True))["benchmarks"]:
        if run.get("aggregate_name") != "median":
            continue
        name, *arguments = run["run_name"].split("/")
        measure, _, who = name.replace("_", " ").rpartition(" ")
        each = run.get("items_per_second")
        time = 1e9 / each if each else run["cpu_time"] * scales[run["time_unit"]]
        what = " ".join([measure, *arguments]) + (", an item" if each else "")
        rows.setdefault(what, {})[who] = time
    return rows


def load():
    return f"load {os.getloadavg()[0]:.1f}"


def machine():
    text = pathlib.Path("/proc/cpuinfo").read_text() if os.path.exists("/proc/cpuinfo") else ""
    model = re.search(r"model name\s*: (.*)", text)
    return f"{model[1] if model else platform.machine()}, {os.cpu_count()} cores, {platform.system()}"


compiler = re.search(r"CMAKE_CXX_COMPILER:\w+=(.*)", (build / "CMakeCache.txt").read_text())[1]
compiler = subprocess.check_output([compiler, "--version"], text=True).splitlines()[0]
print(f"Measured on {datetime.date.today()}: {machine()}; {compiler}. Time of the processor, median of three series.")
for program in sorted((build / "bench").glob("*_bench")):
    print(f"\n## {program.name.removesuffix('_bench').replace('_', ' ').capitalize()}\n\n`{program}`, {load()}\n")
    print("| measure | takes | others take |\n|---|---|---|")
    for measure, times in rows_of(program).items():
        who = next((name for name in times if name not in RIVALS), next(iter(times)))
        ours = times.pop(who)
        rivals = ", ".join(f"{name} {shown(time)} ({time / ours:.2g})" for name, time in times.items())
        print(f"| {measure} | {who} {shown(ours)} | {rivals or '–'} |", flush=True)
for script in ("batch_bench", "film_bench", "python_bench"):
    print(f"\n## {script.removesuffix('_bench').capitalize()}\n\n`bench/{script}`, {load()}\n\n```text", flush=True)
    done = subprocess.run([f"bench/{script}"], text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    print(done.stdout.rstrip() + (f"\nexit code {done.returncode}" if done.returncode else "") + "\n```", flush=True)
