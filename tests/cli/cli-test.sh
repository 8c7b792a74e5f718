#!/usr/bin/env bash
# Drives nvhost from the outside as a person or a host script would: .reg files in;
# variables, statuses, report lines, HTML and actions text out, compared byte for byte.
# Usage: cli-test.sh EXAMPLES_DIR NVHOST [ARGS...]   (NVHOST may be "wine nvhost.exe")
# NV_CLI_REGISTRY=windows: the registry is Windows' own, so the checks of the hive file
# (its refusals, a killed run's transaction) do not apply.
set -u
hive_checks() { [ "${NV_CLI_REGISTRY:-hive}" == hive ]; }
examples=$1
shift
nvhost=("$@")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export NVEXTCH_HIVE="$work/hive.db"
passed=0
failed=0

exec 3>&2  # the script's own error stream, whatever a check does with nvhost's
# Under load, Wine's launcher now and then fails to start a program at all ("ShellExecuteEx
# failed: Internal error", on either stream): nvhost.exe never ran, so that one start is made
# again.
nv() {
  [ "${nvhost[0]}" == wine ] || { "${nvhost[@]}" "$@"; return; }
  local rc
  "${nvhost[@]}" "$@" >"$work/nv-stdout" 2>"$work/nv-stderr"
  rc=$?
  if [ "$rc" != 0 ] && grep -q 'ShellExecuteEx failed' "$work/nv-stdout" "$work/nv-stderr"; then
    echo "note: wine could not start ${nvhost[1]} ($*); started again" >&3
    "${nvhost[@]}" "$@" >"$work/nv-stdout" 2>"$work/nv-stderr"
    rc=$?
  fi
  cat "$work/nv-stdout"
  cat "$work/nv-stderr" >&2
  return "$rc"
}
ok() { passed=$((passed + 1)); }
ko() { failed=$((failed + 1)); echo "FAIL: $*" >&2; }
# expect_out NAME EXPECTED COMMAND...: stdout must be exactly EXPECTED (printf format).
expect_out() {
  local name=$1 expected=$2
  shift 2
  local got want
  got=$(nv "$@"; printf x)
  got=${got%x}
  want=$(printf "$expected"; printf x)
  want=${want%x}
  if [ "$got" == "$want" ]; then ok; else
    ko "$name: got [$(printf '%s' "$got" | od -c | head -5)]"
  fi
}
expect_exit() {
  local name=$1 code=$2
  shift 2
  nv "$@" >"$work/out" 2>"$work/err"
  local rc=$?
  if [ "$rc" == "$code" ]; then ok; else ko "$name: exit $rc, wanted $code ($(head -c 300 "$work/err"))"; fi
}
var_is() { expect_out "variable $1" "$2\n" var get Demo "$1"; }
reg_file() { printf 'Windows Registry Editor Version 5.00\r\n\r\n%s' "$1" >"$work/$2"; }

# --- The sample scenario, run for real -------------------------------------------------
expect_exit "import the sample" 0 reg import "$examples/Demo.reg"
expect_out "status before any run" '0\n' status Demo SplitCustomer
for task in SplitCustomer LogLines ReadSettings; do
  expect_out "run $task" '2\n' run Demo "$task" --report "$work/report.log" --lang en
done
var_is LastName Dupont
var_is Zip 75001
var_is FirstLine "08:00:01 INFO backup started"
var_is LastLine "08:00:12 INFO backup ended"
var_is MiddleLines "08:00:05 WARN disk 91%% full\r\n08:00:09 ERROR copy of /data failed"
var_is DbHost db01
var_is DbUser admin
expect_out "status after a run" '2\n' status Demo LogLines
grep -q -- '--> Run processSplitCustomer$' "$work/report.log" && ok || ko "start line in the report"

# --- Failures: status 3, the error line, earlier pieces kept ---------------------------
reg_file '[HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Demo\Taches\Short]
"Fonction"=dword:00000000
"Chaine"="a;b;c;d"
"Separateur"=";"
"Fields.Count"=dword:00000003
"Fields(1).Var"="@P1"
"Fields(2).Var"=""
"Fields(3).Var"="@P3"
"ExecuteLe"="never"

[HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Demo\Taches\Missing]
"Fonction"=dword:00000000
"Chaine"="@NoSuchVariable"
"Separateur"=";"
' short.reg
expect_exit "import failing tasks" 0 reg import "$work/short.reg"
expect_exit "run with more pieces than fields" 3 run Demo Short --report "$work/fail.log" --lang en
var_is P1 a
var_is P3 c
expect_out "status 3" '3\n' status Demo Short
grep -q ' Execution error #9 ,Subscript out of range$' "$work/fail.log" && ok || ko "error line in English"
nv reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Demo\Taches\Short' | grep -q '"ExecuteLe"="never"' && ok || ko "ExecuteLe kept"
expect_exit "run with a missing variable" 3 run Demo Missing --report "$work/fail.log"
grep -q 'La variable NoSuchVariable n.existe pas dans le scénario Demo$' "$work/fail.log" && ok || ko "host error line alone"

# --- Descriptions and actions, byte for byte --------------------------------------------
rows() {
  local html='<table class="t">  <tr>    <td class="k">%s</td>    <td class="n">%s</td>  </tr></table><table class="t">  <tr>    <td rowspan="7" valign="top" class="m">      <table class="1">'
  printf "$html" "$1" "$2"
}
expected=$(rows ReadSettings "String extraction")
for pair in "Function :|Find values" "String|@Settings" "Separator|" "Mask|host=*; port=*; user=*" "Filter|*"; do
  expected+="        <tr>          <td class=\"i\">${pair%%|*}</td>          <td class=\"j\">${pair#*|}</td>        </tr>"
done
expected+='          <td class="p"></td>          <td class="o">Reads host, port and user out of a key=value text</td>      </table>    </td>  </tr>'
got=$(nv describe Demo ReadSettings --lang en)
[ "$got" == "$expected" ] && ok || ko "describe in English: $got"
nv describe Demo SplitCustomer --lang fr | grep -q '<td class="i">Fonction :</td>          <td class="j">Déconcaténation</td>' && ok || ko "describe in French"

expect_out "actions of a Goto, English" '[Goto]#Goto Report\r\n    Check after execution : True\r\n    If @DbPort = 5432\r\n    @DbPort = Faux#\n' \
  actions Demo ReadSettings --lang en
expect_out "actions of an OnErr, French" '[OnErr]#Continuez le scénario : Vrai\r\n    Auto-Relance : False#\n' \
  actions Demo SplitCustomer --lang fr
expect_out "no actions" '\n' actions Demo LogLines

# --- The actions editor from the command line --------------------------------------------
expect_exit "add ExeIf" 0 action add Demo LogLines ExeIf --var ok --value 1
expect_exit "add OnDec" 0 action add Demo LogLines OnDec --go 1
expect_out "listed in type order" '[OnDec]#Run scenario : True#[ExeIf]#@ok = Vrai#\n' actions Demo LogLines --lang en
expect_exit "modify ExeIf" 0 action modify Demo LogLines exeif --value 0
expect_out "modified" '[OnDec]#Continuez le scénario : Vrai#[ExeIf]#@ok = Faux#\n' actions Demo LogLines --lang fr
nv reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Demo\Taches\LogLines\Action' >"$work/actions.reg"
grep -q '^"Var"="ok"' "$work/actions.reg" && grep -q '^"Go"=dword:00000001' "$work/actions.reg" && ok || ko "actions in the registry"
expect_exit "delete OnDec" 0 action delete Demo LogLines OnDec
expect_out "deleted" '[ExeIf]#@ok = Faux#\n' actions Demo LogLines
expect_exit "unknown kind" 2 action add Demo LogLines Sometimes
expect_exit "operator out of range" 2 action add Demo LogLines Goto --ope 6

# --- Export, import and the hive's refusals ------------------------------------------------
nv reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA' "$work/all.reg" && ok || ko "export to a file"
[ "$(head -c 2 "$work/all.reg" | od -An -tx1 | tr -d ' ')" == "fffe" ] && ok || ko "a file is UTF-16 with its mark"
NVEXTCH_HIVE="$work/copy.db" nv reg import "$work/all.reg" && ok || ko "import the export"
cmp <(nv reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA') <(NVEXTCH_HIVE="$work/copy.db" nv reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA') && ok || ko "export-then-import reproduces the key"
printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\Demo\\Variables]\r\n"Zip"="99999"\r\n"Bad"=dword:xyz\r\n' >"$work/bad.reg"
expect_exit "malformed file" 5 reg import "$work/bad.reg"
grep -q 'line 5' "$work/err" && ok || ko "the line of the fault: $(cat "$work/err")"
var_is Zip 75001
if hive_checks; then
  printf 'not a hive at all' >"$work/text.db"
  expect_exit "a file that is no hive" 5 --hive "$work/text.db" var get Demo Zip
  [ "$(cat "$work/text.db")" == "not a hive at all" ] && ok || ko "the refused file is untouched"
fi

# --- A run killed at any instant: the hive opens, each variable is old or new --------------
if hive_checks && [ "${NV_CLI_SKIP_KILL:-}" == "" ]; then
  source "$(dirname "$0")/many-fields.sh"
  many_fields_task Kill >"$work/body"
  reg_file "$(cat "$work/body")" many.reg
  for attempt in 1 2 3 4 5; do
    NVEXTCH_HIVE="$work/kill.db" nv reg import "$work/many.reg" || ko "import the kill scenario"
    NVEXTCH_HIVE="$work/kill.db" nv run Kill Many --report "$work/kill.log" >/dev/null 2>&1 &
    sleep "0.0$((RANDOM % 9 + 1))"
    kill -9 $! 2>/dev/null
    wait $! 2>/dev/null
    NVEXTCH_HIVE="$work/kill.db" nv reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Kill\Variables' >"$work/vars" &&
      variables_whole "$work/vars" && ok || ko "hive after a kill (attempt $attempt)"
  done
fi

# --- The dialog, run headless: what edit configures and previews is what run stores ---------
# (A button option always: on a screen, edit without one opens the window for a person.)
# preview_matches_run TASK VAR...: each previewed value is what run then stores in its variable.
preview_matches_run() {
  local task=$1 preview var got want
  shift
  preview=$(cat "$work/preview")
  expect_out "run $task" '2\n' run Edit "$task" --report "$work/edit.log"
  for var in "$@"; do
    want=$(printf '%s\n' "$preview" | awk -F'\t' -v v="@$var" '$3 == v { print $2 }')
    got=$(nv var get Edit "$var")
    [ "$got" == "$want" ] && ok || ko "preview of $task for $var: [$want], run stored [$got]"
  done
}
nv var set Edit Line 'Dupont;Jean;75001'
nv var set Edit Conf 'host=db01; port=5432'
nv edit Edit Split --new --function split --string @Line --separator ';' --field @Last --field @First --field @Zip \
  --comment 'from the command line' --preview --confirm >"$work/preview" 2>/dev/null && ok || ko "edit a split task"
grep -q $'^2\tJean\t@First$' "$work/preview" && ok || ko "split preview: $(cat "$work/preview")"
preview_matches_run Split Last First Zip
expect_exit "both separator options" 2 edit Edit Lines --new --separator-choice 1 --separator '|'
nv edit Edit Lines --new --function substrings --string 'l1|l2|l3' --separator '|' \
  --field @Head:0:0 --field @Tail:1:2:True --preview --confirm >"$work/preview" 2>/dev/null && ok || ko "edit a substrings task"
preview_matches_run Lines Head Tail
nv edit Edit Find --new --function find --string @Conf --mask 'host=*; port=*' --filter '*' --trim on \
  --field @Host --field @Port --preview --confirm >"$work/preview" 2>/dev/null && ok || ko "edit a find task"
preview_matches_run Find Host Port
expect_out "a stored task opens in its editor" $'1\tdb01\t@Host\n2\t5432\t@Port\n' edit Edit Find --preview --cancel
expect_out "the name is taken" 'This process already exists\n' edit Edit Find --new --lang en --confirm
expect_exit "a message exits 4" 4 edit Edit Find --new --lang en --confirm
expect_out "an empty string" 'Vous devez renseignez la chaine\n' edit Edit Split --string '' --lang fr --confirm
nv reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Edit\Taches\Split' >"$work/split.reg"
grep -q '^"Chaine"="@Line"' "$work/split.reg" && grep -q '^"Etat"=dword:00000002' "$work/split.reg" && ok || ko "nothing saved after a message"
expect_exit "switch function and apply" 0 edit Edit Split --function find --string 'a=1' --mask 'a=*' --filter '*' --field @A --apply
expect_out "run the switched task" '2\n' run Edit Split --report "$work/edit.log"
expect_out "switched value" '1\n' var get Edit A
expect_exit "cancel saves nothing" 0 edit Edit Nothing --new --cancel
expect_exit "no task after cancel" 1 status Edit Nothing

# --- The command line itself ------------------------------------------------------------------
expect_exit "missing variable" 1 var get Demo Nothing
expect_exit "unknown command" 2 frobnicate
expect_exit "missing argument" 2 run Demo
expect_exit "bad language" 2 run Demo LogLines --lang de
expect_exit "help" 0 run --help
grep -q '^usage: nvhost run SCENARIO TASK' "$work/out" && ok || ko "help text"
expect_exit "status of an unknown task" 1 status Demo Nobody
expect_exit "variable with newlines and accents" 0 var set Demo Accents "$(printf 'élève\nÉTÉ')"
expect_out "read back exactly" 'élève\nÉTÉ\n' var get Demo Accents

# --- nvhost.exe only: any member by name, through IDispatch ------------------------------------
if ! hive_checks; then
  expect_out "call a method" '39\n' call GetWrapperType
  expect_out "call with a by-reference argument" 'False\n' call IsActionSupported 1
  expect_out "call for a task" '2\n' call --task Demo LogLines GetStatus
  expect_out "call a property write" '' call Nom Anything
  expect_exit "call fails as the member does" 5 call SetWorkingMode 40000
  grep -q '^nvhost: error 6: Overflow' "$work/err" && ok || ko "the member's error: $(cat "$work/err")"
  expect_exit "call an unknown member" 2 call Frobnicate
fi

# --- The commands for everyday work: files, listings, help, JSON, the linter --------------------
. "$(dirname "$0")/cli-commands.sh"

echo "$passed passed, $failed failed"
[ "$failed" == 0 ]
