"""docs_test.py ROOT PROGRAM_FOLDER [PYTHON PACKAGE_FOLDER]: what the documents say is true. Their examples print what they show, their C++ is
that of examples/, and their links lead somewhere. Under "console" a line "$ COMMAND" is run where the sample cases lie,
with what earlier ones of the page left; lines "> ..." go on with it, and "..." stands for any lines. Blocks of "pycon"
are one session of Python a page, of the interpreter that has the package."""
import os, pathlib, re, shutil, subprocess, sys, tempfile

root, program_folder, *python = pathlib.Path(sys.argv[1]), *sys.argv[2:]
pages = sorted(p for pattern in ("*.md", "docs/*.md", "*/README.md", "anaitem/*.md", "examples/**/*.md")
               for p in root.glob(pattern))
programs = [p.read_text().strip() for p in root.glob("examples/*.cpp")]
failures, examples, links = [], 0, 0


def blocks(text):
    """(language, line number, lines) of each fenced block, which may be indented."""
    found, open_fence = [], None
    for number, line in enumerate(text.splitlines(), 1):
        fence = re.match(r"( *)(```+)(\w*)", line)
        if open_fence and fence and fence[2] == open_fence[2]:
            open_fence = None
        elif open_fence:
            found[-1][2].append(line[len(open_fence[1]):])
        elif fence:
            open_fence = fence
            found.append((fence[3], number, []))
    return found, open_fence


def matches(expected, printed):
    pattern = "".join("(?:.*\n)*?" if line == "..." else re.escape(line) + "\n" for line in expected)
    return re.fullmatch(pattern, "".join(line.rstrip() + "\n" for line in printed.splitlines()))


def run(page, number, lines, folder):
    global examples
    commands = [i for i, line in enumerate(lines) if line.startswith("$ ")]
    if commands[:1] != [0]:
        failures.append(f"{page}:{number}: does not begin with a command")
    for begin, end in zip(commands, commands[1:] + [len(lines)]):
        environment = {"PATH": program_folder + ":" + os.environ["PATH"], "HOME": str(folder), "LC_ALL": "C.UTF-8"}
        shown = begin + 1
        while shown < end and lines[shown].startswith("> "):
            shown += 1
        command = "\n".join(line[2:] for line in lines[begin:shown])
        result = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, text=True, timeout=120,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)
        examples += 1
        if not matches(lines[shown:end], result.stdout) or result.returncode not in (0, 1, 2):
            failures.append(f"{page}:{number + begin + 1}: {lines[begin]}\nprinted, with exit code "
                            f"{result.returncode}:\n{result.stdout}")


def run_session(page, fenced, folder):
    """Examples of doctest, at the lines that they have in the page."""
    global examples
    session = []
    for language, number, lines in fenced:
        if language == "pycon":
            session += [""] * (number - len(session)) + lines
    if not session:
        return
    needed = [name for line in session for name in re.findall(r"^>>> import (.*)", line)]
    needed = {name.strip() for names in needed for name in names.split(",")}
    without = [name for name in sorted(needed) if not python or subprocess.run(
        [python[0], "-c", f"import {name}"], env={"PYTHONPATH": python[1]}, stderr=subprocess.DEVNULL).returncode]
    if without:
        print(f"{page}: session left out without {', '.join(without)}")
        return
    pathlib.Path(folder, ".session").write_text("\n".join(session) + "\n")
    environment = {"PYTHONPATH": python[1], "PATH": os.environ["PATH"], "HOME": str(folder), "MPLBACKEND": "Agg",
                   "LC_ALL": "C.UTF-8", "OMP_NUM_THREADS": "1"}
    result = subprocess.run([python[0], "-W", "ignore::UserWarning", "-m", "doctest", "-o", "ELLIPSIS", "-o", "NORMALIZE_WHITESPACE", ".session"],
                            cwd=folder, env=environment, text=True, timeout=300, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT)
    examples += sum(line.startswith(">>> ") for line in session)
    if result.returncode:
        failures.append(f"{page}: {result.stdout}")


def anchors(path):
    plain = re.sub(r"^ *(```+).*?^ *\1$", "", path.read_text(), flags=re.S | re.M)
    heads = re.findall(r"^#+ (.*)$", plain, flags=re.M)
    return {re.sub(r"[^\w\- ]", "", head.lower()).replace(" ", "-") for head in heads}


for path in pages:
    page, text = path.relative_to(root), path.read_text()
    fenced, unclosed = blocks(text)
    if unclosed:
        failures.append(f"{page}: a block is not closed")
    with tempfile.TemporaryDirectory() as scratch:
        folder = shutil.copytree(root / "examples/samples", pathlib.Path(scratch, "samples"))
        for language, number, lines in fenced:
            if language == "console":
                run(page, number, lines, folder)
            elif language == "cpp" and not any("\n".join(lines).strip() in program for program in programs):
                failures.append(f"{page}:{number}: no file of examples/ has this program")
            elif any(re.match(r"\s*(\$ |\S*cephtool )", line) for line in lines):
                failures.append(f"{page}:{number}: an example that is not run")
        run_session(page, fenced, folder)
    prose = re.sub(r"^ *(```+).*?^ *\1$|`[^`\n]*`", "", text, flags=re.S | re.M)
    failures += [f"{page}: not run: {line}" for line in re.findall(r"^ {4}.*\bcephtool .*", prose, re.M)]
    for link in re.findall(r"\]\(([^)\s]+)\)|<img src=\"([^\"]+)\"", prose):
        target, _, anchor = "".join(link).partition("#")
        file = path.parent / target if target else path
        links += 1
        if not re.match(r"https?:", target) and (not file.is_file() or anchor and anchor not in anchors(file)):
            failures.append(f"{page}: dead link {''.join(link)}")

told = (root / "docs/old_to_new.md").read_text()
for call in set(re.findall(r"^    static \w+ (\w+)\(", (root / "include/CephCalc.h").read_text(), re.M)):
    if not re.search(rf"\b{call}`", told):
        failures.append(f"docs/old_to_new.md: nothing takes the place of {call}")
reference = (root / "docs/site/python_reference.md").read_text()
failures += [f"docs/site/python_reference.md: {module.stem} is left out" for module in root.glob("python/cephtool/[a-z]*.py")
             if f"::: cephtool.{module.stem}\n" not in reference + "\n"]

print(*failures, f"{len(pages)} pages, {examples} examples, {links} links, {len(failures)} failures", sep="\n")
sys.exit(bool(failures) or not examples or not links)
