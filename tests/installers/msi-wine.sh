#!/usr/bin/env bash
# The plug-in's MSI under Wine, in a fresh prefix of its own: silent install, the sample
# task run by nvhost.exe (a COM client of the same architecture) through the installed
# plug-in, a repair, an uninstall that leaves neither key nor file (and the host's
# scenarios untouched), the registration compared with what regsvr32 writes, and a newer
# build replacing the installed one.
# Usage: msi-wine.sh x86|x64 BUILD_DIR EXAMPLES_DIR
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
arch=$1 build=$(cd "$2" && pwd) examples=$(cd "$3" && pwd)
version=6.1.0.540
msi=$build/NVextch-$version-$arch.msi
nvregwxs=$build/packaging/windows/nvregwxs
nvhost=$build/host/nvhost.exe
standin=$build/platform/win32/standin/nvhoststandin.dll
server=$build/platform/win32/com/NVextch.dll
for f in "$msi" "$nvregwxs" "$nvhost" "$standin" "$server"; do
  [ -f "$f" ] || { echo "FAIL: $f is missing" >&2; exit 1; }
done

failures=0
fail() { echo "FAIL [$arch]: $*" >&2; failures=$((failures + 1)); }
step() { echo "== [$arch] $*"; }

# The package itself: one file, the plug-in, at the product's version; the host stand-in
# is a test fixture and stays out.
files=$(msiinfo export "$msi" File | tr -d '\r' | awk -F'\t' 'NR > 3 { print $3 "=" $5 }')
[ "$files" = "NVextch.dll=$version" ] || fail "the package's files are not NVextch.dll $version alone: $files"
msiinfo export "$msi" Property | tr -d '\r' | grep -qx "ProductVersion	$version" || fail "the product's version is not $version"

work=$build/installer-test
rm -rf "$work"
mkdir -p "$work"
export WINEPREFIX=$work/prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# Wine's own programs (msiexec, reg, regsvr32) of the package's architecture: the wine
# command starts the 32-bit ones, which see the 32-bit view of the registry.
if [ "$arch" = x86 ]; then
  export WINEARCH=win32
  wine=wine
else
  export WINEARCH=win64
  wine=/usr/lib/wine/wine64
  [ -x "$wine" ] || wine=wine64
fi
export LC_ALL=C.UTF-8

seconds() { date +%s.%N; }
elapsed() { awk -v a="$1" -v b="$(seconds)" 'BEGIN { printf "%.1f", b - a }'; }

step "fresh prefix ($WINEARCH)"
"$wine" wineboot -i </dev/null >/dev/null 2>&1
wineserver -w
# One server for the whole run, stopped however the run ends.
wineserver -p 2>/dev/null || true
trap 'wineserver -k 2>/dev/null || true' EXIT
"$wine" wineboot </dev/null >/dev/null 2>&1

folder="$WINEPREFIX/drive_c/Program Files/NVextch"
installed_dll="C:\\Program Files\\NVextch\\NVextch.dll"
mapfile -t roots < <("$nvregwxs" "$arch" roots)
# Every identifier the registration names, and the ProgID.
names=$(printf '%s\n' "${roots[@]}" | grep -o '{[0-9A-F-]*}\|^[^\\]*\.[^\\]*$' | sort -u)

msiexec() {
  local started status
  started=$(seconds)
  "$wine" msiexec "$@" </dev/null >/dev/null 2>&1 && status=0 || status=$?
  step "msiexec $1 $(basename "$2") ${*:3}: exit $status in $(elapsed "$started") s"
  return $status
}

# The registration as regedit writes it, root by root, in UTF-8.
export_registration() {
  local out=$1 part=$work/part.reg
  : >"$out"
  for root in "${roots[@]}"; do
    rm -f "$part"
    if "$wine" reg export "HKCR\\$root" "$part" /y </dev/null >/dev/null 2>&1; then
      iconv -f UTF-16LE -t UTF-8 "$part" | tr -d '\r' | sed '1s/^\xEF\xBB\xBF//' >>"$out"
    else
      echo "(missing) $root" >>"$out"
    fi
  done
}

# No key or value anywhere under the classes, both views and both hives, names our
# identifiers.
registration_gone() {
  local all=$work/classes.txt left=""
  : >"$all"
  for hive in 'HKLM\Software\Classes' 'HKCU\Software\Classes'; do
    rm -f "$work/part.reg"
    "$wine" reg export "$hive" "$work/part.reg" /y </dev/null >/dev/null 2>&1 || continue
    iconv -f UTF-16LE -t UTF-8 "$work/part.reg" >>"$all"
  done
  [ -s "$all" ] || { echo "  the classes could not be read" >&2; return 1; }
  while read -r name; do
    grep -qiF -- "$name" "$all" && left="$left $name"
  done <<<"$names"
  [ -z "$left" ] || { echo "  still named:$left" >&2; return 1; }
}

# Creates the plug-in by ProgID through nvhost.exe and runs one task of the sample.
run_sample() {
  local status city
  "$wine" "$nvhost" var set Demo Customer "Martin;Anne;Lyon;69001" </dev/null >/dev/null 2>&1 || true
  status=$("$wine" "$nvhost" run Demo SplitCustomer --lang en </dev/null 2>/dev/null | tr -d '\r') || true
  city=$("$wine" "$nvhost" var get Demo City </dev/null 2>/dev/null | tr -d '\r') || true
  [ "$status" = 2 ] && [ "$city" = Lyon ] || { fail "$1: run printed '$status', City is '$city'"; return 0; }
  step "$1: SplitCustomer ended (2), City = Lyon"
}

product_entries() {
  "$wine" reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall' /s </dev/null 2>/dev/null | tr -d '\r' |
    grep -c "DisplayName.*NVextch ($arch)" || true
}

# --- install
msiexec /i "$msi" /qn || fail "install"
[ -f "$folder/NVextch.dll" ] || fail "NVextch.dll is not in $folder"
[ "$(ls "$folder")" = NVextch.dll ] || fail "the install folder holds more than NVextch.dll: $(ls "$folder")"
shown=$("$wine" reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall' /s </dev/null 2>/dev/null | tr -d '\r' |
  grep -A30 "DisplayName.*NVextch ($arch)" | grep -m1 DisplayVersion || true)
grep -q "$version" <<<"$shown" || fail "the installed product's version is not $version: '$shown'"
export_registration "$work/msi.reg"
grep -q '(missing)' "$work/msi.reg" && fail "the MSI left keys out: $(grep '(missing)' "$work/msi.reg")"

# --- the plug-in at work, the host stand-in registered apart (it is no part of the product)
"$wine" regsvr32 /s "$standin" </dev/null >/dev/null 2>&1 || fail "regsvr32 of the host stand-in"
"$wine" "$nvhost" reg import "$examples/Demo.reg" </dev/null >/dev/null 2>&1 || fail "importing Demo.reg"
run_sample "installed"

# --- repair: the file and a key taken away come back
rm -f "$folder/NVextch.dll"
"$wine" reg delete "HKCR\\${roots[0]}" /f </dev/null >/dev/null 2>&1 || true
msiexec /i "$msi" REINSTALL=ALL REINSTALLMODE=vamus /qn || fail "repair"
[ -f "$folder/NVextch.dll" ] || fail "repair did not bring NVextch.dll back"
export_registration "$work/repaired.reg"
# Wine's installer has been seen to finish writing a key just after msiexec returned: a
# difference must still be there a moment later to count.
if ! cmp -s "$work/msi.reg" "$work/repaired.reg"; then
  sleep 3
  export_registration "$work/repaired.reg"
fi
diff -u "$work/msi.reg" "$work/repaired.reg" >&2 || fail "the registration after repair differs"
run_sample "repaired"

# --- uninstall
msiexec /x "$msi" /qn || fail "uninstall"
[ ! -e "$folder" ] || fail "the install folder is still there: $(ls -A "$folder")"
registration_gone || fail "uninstall left keys naming our identifiers"
city=$("$wine" "$nvhost" var get Demo City </dev/null 2>/dev/null | tr -d '\r') || true
[ "$city" = Lyon ] || fail "uninstall touched HKLM\\SOFTWARE\\NOVRA (City is '$city')"

# --- the same registration as regsvr32's, the DLL at the same place
mkdir -p "$folder"
cp "$server" "$folder/NVextch.dll"
"$wine" regsvr32 /s "$installed_dll" </dev/null >/dev/null 2>&1 || fail "regsvr32 of the installed path"
export_registration "$work/regsvr32.reg"
if diff -u "$work/regsvr32.reg" "$work/msi.reg" >&2; then
  step "the MSI writes what regsvr32 writes: $(grep -c '^\[' "$work/msi.reg") keys, $(grep -c '^"\|^@' "$work/msi.reg") values"
else
  fail "the MSI's registration differs from regsvr32's (above: - regsvr32, + MSI)"
fi
"$wine" regsvr32 /s /u "$installed_dll" </dev/null >/dev/null 2>&1 || fail "regsvr32 /u"
rm -rf "$folder"

# --- a newer build replaces the installed one and never stands beside it
wixs=$build/packaging/windows/NVextch-$arch.wxs
# Built beside the product's source: wixl finds the DLL and the registry rows there.
sed "s/Version=\"$version\"/Version=\"6.1.0.541\"/" "$wixs" >"$work/newer.wxs"
(cd "$(dirname "$wixs")" && wixl -a "$arch" -o "$work/newer.msi" "$work/newer.wxs" 2>/dev/null &&
  bash "$here/../../packaging/windows/finish-msi.sh" "$work/newer.msi" 6.1.0.541) || fail "building the newer MSI"
msiexec /i "$msi" /qn || fail "install before the upgrade"
msiexec /i "$work/newer.msi" /qn || fail "upgrade"
[ "$(product_entries)" = 1 ] || fail "after the upgrade $(product_entries) products are installed, not one"
run_sample "upgraded"
msiexec /x "$work/newer.msi" /qn || fail "uninstall after the upgrade"
[ "$(product_entries)" = 0 ] || fail "a product is left after uninstalling the newer one"
[ ! -e "$folder" ] || fail "the install folder is still there after the upgrade's uninstall"
registration_gone || fail "the upgrade's uninstall left keys naming our identifiers"

"$wine" regsvr32 /s /u "$standin" </dev/null >/dev/null 2>&1 || true
step "MSI size: $(stat -c %s "$msi") bytes"
[ "$failures" -eq 0 ] && step "all checks passed" || { echo "== [$arch] $failures check(s) failed" >&2; exit 1; }
