#!/usr/bin/env bash
# packages_test.sh BUILD ROOT LIBDIR VERSION SOURCE PYTHON: makes the packages of BUILD, unpacks them in ROOT and uses
# what lies there.
set -euo pipefail
build=$1 root=$2 libraries=$2/usr/$3 version=$4 source=$5 python=$6
fail() { echo "$*" >&2; exit 1; }
expect() { grep -qE -- "$1" <<<"$2" || fail "no \"$1\" in:"$'\n'"$2"; }

rm -rf "$build/packages" "$root"
(cd "$build" && cpack >cpack.log) || fail "$(cat "$build/cpack.log")"
# As dpkg installs them: no two hold the same file. What they depend on is the machine's.
mkdir -p "$root/var/lib/dpkg/"{info,updates}
touch "$root/var/lib/dpkg/"{status,available}
dpkg --root="$root" --log="$root/log" --force-not-root,script-chrootless,depends,bad-path -i "$build"/packages/*.deb >"$root/dpkg.log" 2>&1 ||
    fail "$(cat "$root/dpkg.log")"
# What each is made of, by itself.
page=""
while read -r package parts; do
    file=$(ls "$build"/packages/$package* 2>/dev/null) || continue
    mkdir "$root/alone"
    case $file in *.deb) dpkg-deb -x "$file" "$root/alone" ;; *) cmake -E chdir "$root/alone" cmake -E tar xf "$file" ;; esac
    python3 "${BASH_SOURCE[0]%/*}/sbom_test.py" "$root"/alone$([[ $file != *.zip ]] || echo "/${package%.zip}") $parts || fail "$package"
    [[ $package != cephtool-digitiser-* ]] || page=$(find "$root/alone" -name digitiser.html -size +1M)
    [[ $package != cephtool-digitiser-* || $page ]] || fail "no page in the archive"
    rm -r "$root/alone"
done <<END
libceph-tool0 libstdc++-12-dev
libceph-tool-dev libstdc++-12-dev libeigen3-dev libcairo2-dev
cephtool_ libstdc++-12-dev libcli11-dev nlohmann-json3-dev libeigen3-dev
python3-cephtool_ pybind11-dev libeigen3-dev
cephtool-digitiser_ $(sed -n '/"dependencies"/,/}/s/^ *"@\?\([^"]*\)": .*,\?$/\1/p' "$source/web/package.json" | grep -v dependencies | tr / - | xargs) emscripten
cephtool-digitiser-$version.zip emscripten preact
END
interface=$(objdump -p "$libraries/libTool.so" | sed -n 's/ *SONAME *libTool.so.//p')
[[ $interface == "${version%.*}" ]] || fail "$version promises another interface than SONAME $interface"
expect "libceph-tool$interface \(= $version-[0-9]+\)" "$(dpkg-deb -f "$build"/packages/libceph-tool-dev_*.deb Depends)"
expect "libceph-tool$interface \(>= $version\).*libc6" "$(dpkg-deb -f "$build"/packages/cephtool_*.deb Depends)"

# The program, through its link in bin: library, analyses, outlines and era table.
export LD_LIBRARY_PATH=$libraries program=$root/usr/bin/cephtool samples=$root/usr/share/tool/samples
expect "SNA +82\.0 deg +82\.0" "$("$program" analyze --analysis Steiner "$samples/lateral-average.json")"
expect "令和6年3月5日" "$("$program" era 2024-03-05)"
"$program" trace --outlines fitted "$samples/lateral-class2.json" -o "$root/tracing.svg" 2>"$root/notes"
grep -q 'id="outlines"' "$root/tracing.svg" || fail "a tracing without outlines"
if ls "$build"/packages/cephtool-digitiser_*.deb >/dev/null 2>&1; then
    "$program" digitise "$samples/lateral-class2.json" -o "$root/page.html"
    grep -q 'data-name="lateral-class2.json"' "$root/page.html" || fail "a page without its case"
fi
! objdump -p "$(readlink -f "$program")" | grep -E "RUNPATH|RPATH" || fail "a packaged program has a run path"

# The package for Python, with the program's data; and the wheel, with its own.
if ls "$build"/packages/python3-cephtool_*.deb >/dev/null 2>&1; then
    expect "cephtool \(= $version-[0-9]+\), python3 \(>= 3.*python3-numpy" "$(dpkg-deb -f "$build"/packages/python3-cephtool_*.deb Depends)"
    say='import cephtool; print(cephtool.__file__, cephtool.era("2024-03-05").japanese)
[case] = cephtool.read("'$samples'/lateral-average.json"); print("%.1f" % cephtool.analysis("Steiner").measure_points(
    case.points(["S", "N", "A"])[None], landmarks=["S", "N", "A"], mm_per_pixel=0.1).value[0, 0], case.tracing().notes)'
    expect "^$root/usr.*令和6年3月5日 82.0 \[\]" "$(PYTHONPATH=$root/usr/lib/python3/dist-packages $python -c "$say" | xargs)"
    if $python -c "import pip, wheel" 2>/dev/null; then
        TOOL_BUILD=$build $python -m pip install --quiet --no-build-isolation --no-deps --no-index --root-user-action ignore --target "$root/wheel" "$source" \
            >"$root/pip.log" 2>&1 || fail "$(cat "$root/pip.log")"
        expect "^$root/wheel.*令和6年3月5日 82.0 \[\]" "$(LD_LIBRARY_PATH= PYTHONPATH=$root/wheel $python -c "$say" | xargs)"
    fi
fi

# Documents with all that their links lead to.
while IFS=: read -r page link; do
    [[ $link == http* || -e ${page%/*}/$link ]] || fail "$page: dead link $link"
done < <(grep -rHoP --include='*.md' '(\]\(|img src=")\K[^)#" ]+(?=[)#" ])' "$root/usr/share/doc/cephtool")

# A page for each command, which man can set without a warning.
for command in $("$program" complete ana | cut -f1) era; do
    page=$root/usr/share/man/man1/cephtool-$command.1.gz
    expect '^\\fB\\-\\-format\\fR \\fBtable\\fR\|' "$(zcat "$page")"
    ! command -v man >/dev/null || expect '^$' "$(MANWIDTH=80 man --warnings -E UTF-8 -l "$page" 2>&1 >/dev/null)"
done

# Completion in bash: of commands, names, choices and files.
source "$root/usr/share/bash-completion/completions/cephtool"
cd "$samples"
while IFS='|' read -r line wanted; do
    read -ra COMP_WORDS <<<"$line"
    [[ $line != *" " ]] || COMP_WORDS+=("")
    COMP_WORDS[0]=$program COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    compopt() { :; }
    _cephtool || :  # no file fits is no failure
    [[ ${COMPREPLY[*]} == $wanted ]] || fail "$line<Tab> gives ${COMPREPLY[*]}"
done <<'END'
cephtool ana|analyze analyses
cephtool analyze --format |table json csv
cephtool analyze --format = j|json
cephtool analyze --fo|--format
cephtool analyze model|model-average.json
cephtool analyze --analysis Nor|Northwestern
cephtool trace --mirror --mode Ric|Ricketts
cephtool trace lateral-class2.json ph|
cephtool exif ph|photo.jpg
END
