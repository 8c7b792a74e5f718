# Sourced by cli-test.sh (its helpers and $work): the everyday commands from the outside.
novra='HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA'
# refused NAME CODE COMMAND...: exits CODE and leaves the registry as it was, byte for byte.
refused() {
  local name=$1 code=$2
  shift 2
  nv reg export "$novra" >"$work/before.reg"
  expect_exit "$name" "$code" "$@"
  nv reg export "$novra" >"$work/after.reg"
  cmp -s "$work/before.reg" "$work/after.reg" && ok || ko "$name changed the registry"
}
json_ok() { python3 -c 'import json,sys; json.load(sys.stdin)' <"$work/out" && ok || ko "$1: not JSON: $(head -c 200 "$work/out")"; }
# json_is NAME PYTHON-EXPRESSION COMMAND...: the document `d` printed by COMMAND satisfies the expression.
json_is() {
  local name=$1 test=$2
  shift 2
  nv "$@" >"$work/out" 2>"$work/err"
  python3 -c "import json,sys; d=json.load(sys.stdin); sys.exit(0 if ($test) else 1)" <"$work/out" && ok ||
    ko "$name: $(head -c 300 "$work/out")"
}

# --- Values in and out byte for byte: a file, standard input, --output ---------------------------
printf '08:00:01 INFO start\r\n08:00:02 WARN élève\r\nlast line\n\n' >"$work/log.txt"
expect_exit "var set --file" 0 var set Files Log --file "$work/log.txt"
expect_exit "var get --output" 0 var get Files Log --output "$work/log.back"
cmp -s "$work/log.txt" "$work/log.back" && ok || ko "a file read back differs"
[ ! -s "$work/out" ] && ok || ko "--output prints nothing"
nv var set Files Piped - <"$work/log.txt" && nv var get Files Piped --output "$work/piped.back" &&
  cmp -s "$work/log.txt" "$work/piped.back" && ok || ko "standard input read back differs"
nv var set Files Piped --file - <"$work/log.txt" && nv var get Files Piped --output "$work/piped.back" &&
  cmp -s "$work/log.txt" "$work/piped.back" && ok || ko "--file - reads standard input once"
head -c 300000 /dev/zero | tr '\0' 'x' >"$work/big.txt"
printf 'end\n' >>"$work/big.txt"
nv var set Files Big --file "$work/big.txt" && nv var get Files Big --output "$work/big.back" &&
  cmp -s "$work/big.txt" "$work/big.back" && ok || ko "a 300 KB value"
printf 'kept' >"$work/kept.txt"
refused "var get of a missing variable" 1 var get Files Missing --output "$work/kept.txt"
[ "$(cat "$work/kept.txt")" = kept ] && ok || ko "a missing variable leaves the --output file as it was"
printf 'ab\xffcd' >"$work/bad.txt"
refused "invalid UTF-8 refused" 5 var set Files Bad --file "$work/bad.txt"
grep -q 'offset 2' "$work/err" && ok || ko "the offset of the bad byte: $(cat "$work/err")"
refused "a missing input file" 5 var set Files Bad --file "$work/no-such-file"
if hive_checks; then  # devices and FIFOs as Linux has them: refused, not read without end
  mkfifo "$work/fifo"
  for special in /dev/zero "$work/fifo"; do
    timeout 20 "${nvhost[@]}" var set Files Bad --file "$special" >/dev/null 2>"$work/err"
    [ $? == 5 ] && grep -q 'not a regular file' "$work/err" && ok || ko "var set --file $special: $(cat "$work/err")"
  done
fi
refused "--file and a value" 2 var set Files Bad value --file "$work/log.txt"
printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\Files\\Variables]\r\n"FromStdin"="yes"\r\n' |
  nv reg import - && ok || ko "reg import from standard input"
expect_out "imported from standard input" 'yes\n' var get Files FromStdin

# --- The escapes regedit writes inside quoted text ------------------------------------------------
reg_file '[HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Files\Variables]
"Lines"="one\r\ntwo\nthree \"q\" \\ end"
' escapes.reg
expect_exit "import \\r \\n escapes" 0 reg import "$work/escapes.reg"
expect_out "escapes read back" 'one\r\ntwo\nthree "q" \\ end\n' var get Files Lines
nv reg export "$novra\\Scenarios\\Files\\Variables" "$work/files.reg" && nv reg import "$work/files.reg" && ok || ko "re-import an export"
expect_out "escapes after a round trip" 'one\r\ntwo\nthree "q" \\ end\n' var get Files Lines

# --- Listings and removal ---------------------------------------------------------------------------
# (The order is the registry's: the hive keeps the order of writing, Wine sorts by name.)
[ "$(nv var list Files | sort | tr '\n' ' ')" == "Big FromStdin Lines Log Piped " ] && ok || ko "var list: $(nv var list Files)"
expect_exit "var unset" 0 var unset Files Big
[ "$(nv var list Files | sort | tr '\n' ' ')" == "FromStdin Lines Log Piped " ] && ok || ko "var list after unset"
refused "var unset of a missing variable" 1 var unset Files Big
expect_out "var list of an unknown scenario" '' var list NoScenario
expect_out "task list" 'LogLines\tsubstrings\t2\nMissing\tsplit\t3\nReadSettings\tfind\t2\nShort\tsplit\t3\nSplitCustomer\tsplit\t2\n' task list Demo
expect_out "task show" 'function\tsplit\nstring\ta;b;c;d\nseparator\t;\ncomment\t\nstatus\t3\nfield 1\t@P1\nfield 2\t\nfield 3\t@P3\n' task show Demo Short
refused "task show of a missing task" 1 task show Demo Nobody
expect_exit "task delete" 0 task delete Demo Short
refused "task delete again" 1 task delete Demo Short
refused "task with no verb" 2 task

# --- Nothing is created by mistake ---------------------------------------------------------------
for command in "run Demo NoSuchTask" "status Demo NoSuchTask" "describe Demo NoSuchTask" "actions Demo NoSuchTask" \
  "action add Demo NoSuchTask OnErr --go 1" "edit Demo NoSuchTask --string x --confirm" "check Demo NoSuchTask" \
  "task show Demo NoSuchTask"; do
  # shellcheck disable=SC2086
  refused "$command" 1 $command
  grep -q 'no task Demo\\NoSuchTask' "$work/err" && ok || ko "$command names the task: $(cat "$work/err")"
done
if hive_checks; then
  for command in "status Demo LogLines" "var get Demo Zip" "var list Demo" "task list Demo" "task show Demo LogLines" \
    "describe Demo LogLines" "actions Demo LogLines" "reg export HKLM\\SOFTWARE" "check Demo LogLines"; do
    # shellcheck disable=SC2086
    expect_exit "$command on a missing hive" 1 --hive "$work/typo/hive.db" $command
    [ ! -e "$work/typo" ] && ok || ko "$command created $(find "$work/typo")"
  done
fi

# --- Help and version ------------------------------------------------------------------------------
expect_exit "help run" 0 help run
grep -q '^usage: nvhost run SCENARIO TASK' "$work/out" && grep -q 'exit status' "$work/out" && ok || ko "help run: $(head -3 "$work/out")"
nv edit --help >"$work/edit-help"
for text in 'START counts from 0' '0 comma, 1 semicolon' 'each occurrence of the filter' 'Default --confirm' \
  '--trim on|off' 'message 603'; do
  grep -qF -- "$text" "$work/edit-help" && ok || ko "edit --help explains [$text]"
done
nv action --help | grep -qF '0 <, 1 <=, 2 >, 3 >=, 4 =, 5 <>' && ok || ko "action --help gives the operators"
nv --help | grep -q '^  4  edit: the dialog showed a message' && ok || ko "the exit statuses in --help"
nv --version | grep -q '^nvhost 6\.1\.0\.540 (build ' && ok || ko "version: $(nv --version)"
expect_exit "help of an unknown command" 2 help frobnicate

# --- edit as the dialog is used ------------------------------------------------------------------------
nv var set Jobs Csv 'Martin,Anne,Lyon,69001,0472000000'
expect_exit "a name without @ saves on" 0 edit Jobs Csv --new --function split --string @Csv --separator-choice 0 \
  --field @Name --field First --field ' @City ' --field @Zip --field @Phone
grep -q '^warning: ' "$work/err" && ok || ko "message 603 as a warning: $(cat "$work/err")"
expect_out "the field without @ saved empty, the padded one trimmed" \
  'function\tsplit\nstring\t@Csv\nseparator\t,\ncomment\t\nstatus\t0\nfield 1\t@Name\nfield 2\t\nfield 3\t@City\nfield 4\t@Zip\nfield 5\t@Phone\n' \
  task show Jobs Csv
expect_out "run the CSV job" '2\n' run Jobs Csv --report "$work/jobs.log"
for pair in Name=Martin City=Lyon Zip=69001 Phone=0472000000; do
  expect_out "CSV ${pair%%=*}" "${pair#*=}\n" var get Jobs "${pair%%=*}"
done
nv var set Jobs Settings 'HOST=db01; port=5432; user= admin '
nv edit Jobs Conf --new --function find --string @Settings --mask 'host=*; port=*; user=*' --filter '*' \
  --case-sensitive on --trim on --field @Host --field @Port --field @User >/dev/null 2>&1
expect_out "case-sensitive on: HOST= is not host=" '2\n' run Jobs Conf --report "$work/jobs.log"
expect_out "no match, one empty value" '\n' var get Jobs Host
expect_exit "check boxes switched off and on" 0 edit Jobs Conf --case-sensitive off --trim on --confirm
expect_out "run the settings job" '2\n' run Jobs Conf --report "$work/jobs.log"
expect_out "host" 'db01\n' var get Jobs Host
expect_out "user trimmed" 'admin\n' var get Jobs User
json_is "task show --json" 'd["caseSensitive"] is False and d["trim"] is True and [f["var"] for f in d["fields"]]==["@Host","@Port","@User"]' \
  task show Jobs Conf --json
expect_exit "trim off" 0 edit Jobs Conf --trim off
json_is "trim switched off" 'd["trim"] is False' task show Jobs Conf --json
refused "--preview alone saves nothing" 0 edit Jobs Conf --string 'host=x; port=1; user=u' --preview
refused "a mask for a split task" 2 edit Jobs Csv --mask 'a=*'
refused "a separator for a find task" 2 edit Jobs Conf --separator ';'
refused "--trim needs on or off" 2 edit Jobs Conf --trim yes
expect_exit "zero fields" 0 edit Jobs Conf --no-fields
json_is "no fields saved" 'd["fields"]==[]' task show Jobs Conf --json

# --- The last 3 lines of a log, read by --file ------------------------------------------------------
printf 'l1 start\nl2 copy\nl3 warn\nl4 error\nl5 end\n' >"$work/job.log"
nv var set Jobs Log --file "$work/job.log"
expect_exit "a substrings task" 0 edit Jobs Tail --new --function substrings --string @Log --separator-choice 6 \
  --field @Last3:-4:-1
expect_out "run the log job" '2\n' run Jobs Tail --report "$work/jobs.log"
expect_out "the last 3 lines" 'l3 warn\nl4 error\nl5 end\n' var get Jobs Last3

# --- JSON -------------------------------------------------------------------------------------------------
json_is "run --json" 'd["status"]==2 and d["task"]=="Tail" and len(d["report"])>=1' \
  run Jobs Tail --json
nv var set Jobs Last3 stale
json_is "run --json lists what the run set" 'd["variables"]=={"Last3":"l3 warn\nl4 error\nl5 end"}' run Jobs Tail --json
json_is "var get --json" 'd=={"scenario":"Jobs","name":"Zip","value":"69001"}' var get Jobs Zip --json
json_is "var list --json" '{"name":"Log","value":"l1 start\nl2 copy\nl3 warn\nl4 error\nl5 end\n"} in d["variables"]' var list Jobs --json
json_is "task list --json" '{"name":"Tail","function":"substrings","status":2} in d["tasks"]' task list Jobs --json
json_is "status --json" 'd=={"scenario":"Jobs","task":"Tail","status":2}' status Jobs Tail --json
nv var set Jobs Quote "$(printf 'a"b\\c\te\001')"
json_is "control characters escaped" 'd["value"]=="a\"b\\c\te\x01"' var get Jobs Quote --json

# --- check: the linter ---------------------------------------------------------------------------------
expect_exit "a clean task" 0 check Jobs Tail
nv var set Jobs Csv 'a,b,c,d,e,f'
expect_exit "more pieces than fields" 1 check Jobs Csv
grep -q '^error	the input yields 6 pieces for 5 fields' "$work/out" && ok || ko "error 9 foreseen: $(cat "$work/out")"
grep -q '^warning	field 2 has no variable' "$work/out" && ok || ko "a field without a variable found"
nv edit Jobs Conf --mask 'host=**; port=*' --field @Host --field @Port >/dev/null 2>&1
nv var set Jobs Settings 'host=d*b; port=1'
nv edit Jobs Lower --new --function find --string @Nothing --mask 'a=x' --filter x --field @A >/dev/null 2>&1
expect_exit "findings of a find task" 1 check Jobs Conf
grep -q 'placeholders touch' "$work/out" && grep -q 'occurs in the input' "$work/out" && ok || ko "find findings: $(cat "$work/out")"
expect_exit "a lower-case filter, case-insensitive" 1 check Jobs Lower
grep -q 'upper-case' "$work/out" && grep -q 'refers to @Nothing' "$work/out" && ok || ko "lower-case findings: $(cat "$work/out")"
json_is "check --json" 'len(d["findings"])>=2 and all(f["severity"] in ("error","warning") for f in d["findings"])' check Jobs Lower --json
# A log of over 1 MiB (as UTF-16) is counted as it is read: the same findings as a short one.
seq 1 100000 >"$work/long.log"
nv var set Jobs LongLog --file "$work/long.log"
nv edit Jobs LongSplit --new --function split --string @LongLog --separator-choice 6 --field @A --field @B \
  --confirm >/dev/null 2>&1
nv edit Jobs LongTail --new --function substrings --string @LongLog --separator-choice 0 --field @Last:-2:-1 \
  --confirm >/dev/null 2>&1
json_is "var get --json --output: the same long value in both" \
  "d['value']==open('$work/long.log',newline='').read()==open('$work/long.back',newline='').read()" \
  var get Jobs LongLog --json --output "$work/long.back"
json_is "var list --json: a long value among short ones" \
  "[v['value'] for v in d['variables'] if v['name']=='LongLog']==[open('$work/long.log',newline='').read()]" \
  var list Jobs --json
expect_exit "the lines of a long log counted" 1 check Jobs LongSplit
grep -q '^error	the input yields 100001 pieces for 2 fields' "$work/out" && ok || ko "long log pieces: $(cat "$work/out")"
expect_exit "a separator missing from a long log" 1 check Jobs LongTail
grep -q '^warning	the separator "," does not occur in the input' "$work/out" && ok || ko "long log separator: $(cat "$work/out")"
