#!/usr/bin/env bash
# windows_zip_test.sh BUILD FOLDER SOURCE COMPILER: makes the archive for Windows of BUILD, unpacks it in FOLDER and uses what lies there
# in Wine: the program, and the example host, as it is packed and compiled anew with nothing but the archive.
set -euo pipefail
build=$1 folder=$2 source=$3 compiler=$4
fail() { echo "$*" >&2; exit 1; }
expect() { grep -qE -- "$1" <<<"$2" || fail "no \"$1\" in:"$'\n'"$2"; }

rm -rf "$build/packages" "$folder"
(cd "$build" && cpack >cpack.log) || fail "$(cat "$build/cpack.log")"
mkdir -p "$folder/made"
cmake -E chdir "$folder" cmake -E tar xf "$build"/packages/cephtool-*-windows-x64.zip
mv "$folder"/cephtool-*-windows-x64 "$folder/tooth 歯"
root="$folder/tooth 歯"
python3 "${BASH_SOURCE[0]%/*}/sbom_test.py" "$root" libcli11-dev nlohmann-json3-dev libeigen3-dev \
    g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev

# Nothing but the archive and the system.
export WINEPATH=C:\\none
wine() { "$source/scripts/wine" "$build/wine" "$@"; }
program() { wine "$root/bin/cephtool.exe" "$@"; }
cd "$folder/made"
cp "$root"/share/tool/samples/{lateral-average.json,lateral-class2.json,film.dcm} .
expect "SNA +82\.0 deg +82\.0" "$(program analyze --analysis Steiner lateral-average.json)"
expect "令和6年3月5日" "$(program era 2024-03-05)"
expect "13 years 7 months" "$(program age H23.9.20 2025-04-21)"
expect "." "$(program stage lateral-class2.json)"
program trace lateral-class2.json -o x.svg
expect 'id="outlines"' "$(cat x.svg)"
program chart lateral-class2.json --analysis Steiner -o chart.svg
expect "</svg>" "$(cat chart.svg)"
program report lateral-class2.json -o report.html
expect 'id="p3-' "$(cat report.html)"
program batch lateral-average.json lateral-class2.json -o x.csv
[[ $(wc -l <x.csv) == 3 ]] || fail "not a row for each case: $(cat x.csv)"
expect "," "$(program film film.dcm --format csv)"
if [ -e "$root/share/tool/digitiser/index.html" ]; then
    program digitise film.dcm -o page.html
    expect 'data-name="film.dcm"' "$(grep -o 'data-name="[^"]*"' page.html)"
fi

"$compiler" -std=c++20 -static -I "$root/include/tool" "$root"/examples/windows-host/*.cpp "$root/lib/libTool.dll.a" -lgdi32 -o "$root/bin/own-host.exe"
for host in windows-host own-host; do
    # It stays until its window is closed, which nobody does; without a case it goes at once.
    code=0
    timeout 8 "$source/scripts/wine" "$build/wine" "$root/bin/$host.exe" "$root/share/tool/anaitem" "$root/share/tool/samples/lateral-average.csv" || code=$?
    [ $code -eq 124 ] || fail "$host ends with $code"
done
