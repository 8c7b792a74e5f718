#!/usr/bin/env bash
# The command-line checks again, through nvhost.exe under Wine: the plug-in and the host
# stand-in registered with regsvr32, Wine's registry in place of the hive.
# Usage: cli-wine.sh EXAMPLES_DIR NVHOST_EXE NVEXTCH_DLL STANDIN_DLL
set -u
here=$(cd "$(dirname "$0")" && pwd)
examples=$1 nvhost=$2 server=$3 standin=$4
# Wine hands the arguments to the program through the locale's code page: UTF-8 keeps them.
export LC_ALL=C.UTF-8
wine regsvr32 /s "$server" && wine regsvr32 /s "$standin" || { echo "FAIL: regsvr32" >&2; exit 1; }
# A 64-bit nvhost.exe sees the 64-bit view of HKLM\SOFTWARE, a 32-bit one the 32-bit view;
# Wine's loader is the 32-bit one where both halves are installed, and its reg and regedit
# see the 32-bit view unless told otherwise. The PE header's machine field tells which.
pe_offset=$(od -An -tu4 -j60 -N4 "$nvhost" | tr -d ' ')
machine=$(od -An -tx2 -j$((pe_offset + 4)) -N2 "$nvhost" | tr -d ' ')
if [ "$machine" = 8664 ]; then
  view=/reg:64
  regedit=(wine regedit)
  [ -x /usr/lib/wine/wine64 ] && regedit=(/usr/lib/wine/wine64 regedit)
else
  view=/reg:32
  regedit=(wine regedit)
fi
wine reg delete 'HKLM\SOFTWARE\NOVRA' "$view" /f >/dev/null 2>&1
NV_CLI_REGISTRY=windows bash "$here/cli-test.sh" "$examples" wine "$nvhost"
status=$?

# A file written by Wine's own regedit, with multi-line texts (it writes them as \r, \n
# escapes inside the quotes), imports with every value equal.
work=$(mktemp -d)
key='HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Regedit\Variables'
printf 'line 1\r\nline 2\r\n' >"$work/crlf"
printf 'a\nb\n\nc "quoted" \\ back\\slash' >"$work/lf"
printf 'élève\rÉTÉ' >"$work/cr"
printf 'plain' >"$work/plain"
regedit_failed=0
for name in crlf lf cr plain; do
  wine "$nvhost" var set Regedit "$name" --file "$work/$name" || regedit_failed=1
done
"${regedit[@]}" /E "Z:${work//\//\\}\\regedit.reg" "$key" </dev/null || regedit_failed=1
iconv -f UTF-16LE -t UTF-8 "$work/regedit.reg" | grep -q '\\n' || { echo "FAIL: regedit wrote no \\n escape" >&2; regedit_failed=1; }
wine reg delete 'HKLM\SOFTWARE\NOVRA\Scenarios\Regedit' "$view" /f >/dev/null 2>&1
wine "$nvhost" reg import "$work/regedit.reg" || { echo "FAIL: nvhost.exe refused regedit's file" >&2; regedit_failed=1; }
for name in crlf lf cr plain; do
  wine "$nvhost" var get Regedit "$name" --output "$work/$name.back" && cmp -s "$work/$name" "$work/$name.back" ||
    { echo "FAIL: $name after regedit /E and reg import" >&2; regedit_failed=1; }
done
rm -rf "$work"
[ "$regedit_failed" == 0 ] && echo "regedit /E file imported, every value equal" || status=1
wine reg delete 'HKLM\SOFTWARE\NOVRA' "$view" /f >/dev/null 2>&1
wine regsvr32 /s /u "$standin"
wine regsvr32 /s /u "$server"
exit $status
