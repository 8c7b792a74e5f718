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
wine reg delete 'HKLM\SOFTWARE\NOVRA' /f >/dev/null 2>&1
NV_CLI_REGISTRY=windows bash "$here/cli-test.sh" "$examples" wine "$nvhost"
status=$?
wine reg delete 'HKLM\SOFTWARE\NOVRA' /f >/dev/null 2>&1
wine regsvr32 /s /u "$standin"
wine regsvr32 /s /u "$server"
exit $status
