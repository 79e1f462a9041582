"""sbom_test.py FOLDER [NAME...]: what lies in the unpacked package FOLDER is what its sbom.spdx.json tells, each part of it by others
has its licence there, and the NAMEs are among these; whatever its programs load is told as well."""
import hashlib
import json
import subprocess
import sys
from pathlib import Path

root, wanted = Path(sys.argv[1]), set(sys.argv[2:])
[bill] = root.rglob("sbom.spdx.json")
document = json.loads(bill.read_text(encoding="utf-8"))
told = {file["fileName"]: file["checksums"][0]["checksumValue"] for file in document["files"]}
licences = bill.parent / "licences"
there = {f"./{path.relative_to(root).as_posix()}": hashlib.sha1(path.read_bytes()).hexdigest() for path in root.rglob("*")
         if path.is_file() and not path.is_symlink() and path != bill and licences not in path.parents}
assert told == there, sorted(set(told.items()) ^ set(there.items()))[:4]

names = {package["SPDXID"]: package["name"] for package in document["packages"]}
parts = {how: {names[relation["relatedSpdxElement"]] for relation in document["relationships"]
               if relation["relationshipType"] == how and relation["relatedSpdxElement"] in names} for how in ("CONTAINS", "DYNAMIC_LINK")}
assert wanted <= parts["CONTAINS"], wanted - parts["CONTAINS"]
for name in parts["CONTAINS"]:
    assert len((licences / f"{name}.txt").read_text(encoding="utf-8")) > 100, name
[itself] = [package for package in document["packages"] if package["SPDXID"] == "SPDXRef-Package"]
assert itself["licenseDeclared"] == "NOASSERTION" and "No licence" in itself["licenseComments"], itself

for path in root.rglob("*"):
    if path.is_symlink() or not path.is_file() or path.open("rb").read(4) != b"\x7fELF":
        continue
    for line in subprocess.run(["ldd", path], capture_output=True, text=True, check=True).stdout.splitlines():
        library = line.split()[0]
        needed = subprocess.run(["objdump", "-p", path], capture_output=True, text=True, check=True).stdout
        if f"NEEDED               {library}\n" not in needed or library.startswith(("libTool.", "ld-linux")):
            continue
        place = Path(line.split()[2]).resolve()
        owner = subprocess.run(["dpkg", "-S", f"*/{place.parent.name}/{place.name}"], capture_output=True, text=True, check=True).stdout.split(":")[0]
        assert owner in parts["DYNAMIC_LINK"] | parts["CONTAINS"], (path, library, owner)
