#!/usr/bin/env bash
# nvhost on damaged hives, odd files, read-only hives and bad names: every command ends within
# seconds, says why, and leaves a file it refused byte for byte as it was, with nothing beside it.
# Usage: cli-damage.sh NVHOST
set -u
nvhost=$1
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
passed=0
failed=0
ok() { passed=$((passed + 1)); }
ko() { failed=$((failed + 1)); echo "FAIL: $*" >&2; }

# refused NAME CODE WORDS COMMAND...: exits with CODE within 10 s, saying WORDS on stderr.
refused() {
  local name=$1 code=$2 words=$3
  shift 3
  timeout 10 "$nvhost" "$@" >"$work/out" 2>"$work/err" </dev/null
  local rc=$?
  if [ "$rc" == 124 ]; then ko "$name: still running after 10 s"; return; fi
  [ "$rc" == "$code" ] && ok || ko "$name: exit $rc, wanted $code ($(head -c 300 "$work/err"))"
  [ -z "$words" ] || { grep -q -- "$words" "$work/err" && ok || ko "$name: no '$words' in: $(head -c 300 "$work/err")"; }
}
# snapshot FILE / unchanged NAME FILE: the bytes of FILE, and the files beside it, as before.
snapshot() { { md5sum "$1"; ls -a "$(dirname "$1")"; } >"$work/snapshot-${1//\//_}" 2>&1; }
unchanged() {
  { md5sum "$2"; ls -a "$(dirname "$2")"; } >"$work/now" 2>&1
  cmp -s "$work/snapshot-${2//\//_}" "$work/now" && ok || ko "$1: the file or its folder changed: $(diff "$work/snapshot-${2//\//_}" "$work/now" | head -5)"
}
reg_file() { printf 'Windows Registry Editor Version 5.00\r\n\r\n%s' "$1" >"$2"; }
flip_byte() {  # FILE OFFSET
  local byte
  byte=$(od -An -tu1 -j"$2" -N1 "$1" | tr -d ' ')
  printf "\\$(printf '%03o' $((byte ^ 1)))" | dd of="$1" bs=1 seek="$2" conv=notrunc status=none
}

# A real hive to damage.
{
  for k in $(seq 1 40); do
    printf '[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\S%d\\Variables]\r\n' "$k"
    for v in $(seq 1 25); do printf '"V%d"="value %d of %d"\r\n' "$v" "$v" "$k"; done
  done
} >"$work/body"
reg_file "$(cat "$work/body")" "$work/many.reg"
mkdir "$work/h"
"$nvhost" --hive "$work/h/good.db" reg import "$work/many.reg" || ko "import into a fresh hive"

# --- Damaged index pages: refused, checked in full on demand, recovered ----------------------
cp "$work/h/good.db" "$work/h/index.db"
# The header's page size; 1 stands for 65,536.
page=$(od -An -tu1 -j16 -N2 "$work/h/index.db" | awk '{ size = $1 * 256 + $2; print size == 1 ? 65536 : size }')
pages=$(($(stat -c %s "$work/h/index.db") / page))
flipped=0
for ((p = 1; p < pages; p++)); do
  offset=$((p * page))
  [ "$(od -An -tx1 -j$offset -N1 "$work/h/index.db" | tr -d ' ')" == 0a ] || continue
  # The format's own table is stored like an index: spared, so that the damage is the indexes'.
  dd if="$work/h/index.db" bs="$page" skip="$p" count=1 status=none | grep -qa 'nvextch hive' && continue
  flip_byte "$work/h/index.db" $((offset + page - 6))
  flipped=$((flipped + 1))
done
[ "$flipped" -gt 0 ] && ok || ko "no index page to damage"
snapshot "$work/h/index.db"
for command in "var get S1 V1" "reg export HKLM\\SOFTWARE" "var set S1 V1 new"; do
  # shellcheck disable=SC2086
  refused "damaged hive: $command" 5 "index.db is damaged" --hive "$work/h/index.db" $command
done
refused "hive check" 1 "" hive check "$work/h/index.db"
grep -q 'missing from index' "$work/out" && ok || ko "hive check names the damage: $(head -3 "$work/out")"
unchanged "damaged hive" "$work/h/index.db"
timeout 20 "$nvhost" hive recover "$work/h/index.db" "$work/recovered.db" >"$work/out" 2>&1 && ok || ko "recover: $(cat "$work/out")"
cmp -s <("$nvhost" --hive "$work/h/good.db" reg export HKLM\\SOFTWARE) <("$nvhost" --hive "$work/recovered.db" reg export HKLM\\SOFTWARE) &&
  ok || ko "recover copies every key and value"
refused "recover over a file" 5 "already exists" hive recover "$work/h/index.db" "$work/recovered.db"

# --- Files that are no hive or no .reg file ----------------------------------------------------
mkfifo "$work/fifo"
mkdir "$work/folder"
refused "a FIFO as hive" 5 "FIFO" --hive "$work/fifo" var get S1 V1
refused "a folder as hive" 5 "a folder" --hive "$work/folder" var get S1 V1
refused "a device as hive" 5 "character device" --hive /dev/zero var get S1 V1
refused "an empty hive name" 2 "needs a file" --hive "" var get S1 V1
for input in "$work/fifo" "$work/folder" /dev/zero; do
  refused "import of $input" 5 "not a regular file" --hive "$work/h/good.db" reg import "$input"
done
printf 'just text' >"$work/h/text.db"
snapshot "$work/h/text.db"
refused "a text file as hive" 5 "is not an nvextch hive" --hive "$work/h/text.db" var get S1 V1
unchanged "a text file as hive" "$work/h/text.db"

# --- Read-only hives: every read served, every write refused naming the file ------------------
"$nvhost" --hive "$work/h/good.db" reg import "$(dirname "$0")/../../examples/Demo.reg"
"$nvhost" --hive "$work/h/good.db" var set Demo Customer 'a;b;c;d'
mkdir "$work/ro"
cp "$work/h/good.db" "$work/ro/hive.db"
cp "$work/h/good.db" "$work/h/ro.db"
chmod a-w "$work/ro" "$work/h/ro.db"
for hive in "$work/h/ro.db" "$work/ro/hive.db"; do
  snapshot "$hive"
  timeout 10 "$nvhost" --hive "$hive" var get S2 V3 >"$work/out" 2>"$work/err" && [ "$(cat "$work/out")" == "value 3 of 2" ] &&
    ok || ko "read-only $hive: var get: $(cat "$work/err")"
  timeout 10 "$nvhost" --hive "$hive" describe Demo SplitCustomer >/dev/null 2>&1 && ok || ko "read-only $hive: describe"
  refused "read-only var set" 5 "$hive cannot be written" --hive "$hive" var set S2 V3 x
  refused "read-only import" 5 "$hive cannot be written" --hive "$hive" reg import "$work/many.reg"
  refused "read-only action" 5 "$hive cannot be written" --hive "$hive" action add Demo SplitCustomer Goto
  refused "read-only run" 5 "status .* could not be stored: hive $hive cannot be written" --hive "$hive" run Demo SplitCustomer
  unchanged "read-only $hive" "$hive"
done

# --- Names and depths past Windows' limits ------------------------------------------------------
snapshot "$work/h/good.db"
refused "a variable name with a line feed" 5 "line break (LF)" --hive "$work/h/good.db" var set S1 $'bad\nname' v
refused "a scenario name with a CR" 5 "line break (CR)" --hive "$work/h/good.db" var set $'S\r1' name v
refused "a long value name" 5 "at most 16383" --hive "$work/h/good.db" var set S1 "$(printf 'n%.0s' $(seq 16384))" v
reg_file $'[HKEY_LOCAL_MACHINE\\SOFTWARE\\Bad]\r\n"lone\rcr"="x"\r\n' "$work/cr-value.reg"
reg_file $'[HKEY_LOCAL_MACHINE\\SOFTWARE\\Bad\rKey]\r\n' "$work/cr-key.reg"
reg_file "[HKEY_LOCAL_MACHINE\\SOFTWARE\\$(printf 'k%.0s' $(seq 256))]"$'\r\n' "$work/long-key.reg"
deep=SOFTWARE
for level in $(seq 2 512); do deep+='\L'; done
reg_file "[HKEY_LOCAL_MACHINE\\$deep\\Deeper]"$'\r\n' "$work/deeper.reg"
printf 'Windows Registry Editor Version 5.00\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\U]\r\n"s"="\xED\xA0\x80"\r\n' >"$work/surrogate.reg"
for file in cr-value:"line break (CR)" cr-key:"line break (CR)" long-key:"at most 255" deeper:"at most 512" \
  surrogate:"not valid UTF-8"; do
  snapshot "$work/${file%%:*}.reg"
  refused "import of ${file%%:*}.reg" 5 "${file#*:}" --hive "$work/h/good.db" reg import "$work/${file%%:*}.reg"
  unchanged "${file%%:*}.reg" "$work/${file%%:*}.reg"
done
refused "a task name with a LF" 5 "line break" --hive "$work/h/good.db" edit Demo $'T\nx' --new --confirm
unchanged "the hive after refused names" "$work/h/good.db"
# The deepest tree the registry allows comes in, goes out and can be deleted.
reg_file "[HKEY_LOCAL_MACHINE\\$deep]"$'\r\n"v"="deep"\r\n' "$work/deepest.reg"
timeout 10 "$nvhost" --hive "$work/h/good.db" reg import "$work/deepest.reg" && ok || ko "import 512 levels"
timeout 10 "$nvhost" --hive "$work/h/good.db" reg export HKLM\\SOFTWARE\\L >/dev/null 2>&1 && ok || ko "export 512 levels"
reg_file $'[-HKEY_LOCAL_MACHINE\\SOFTWARE\\L]\r\n' "$work/delete.reg"
timeout 10 "$nvhost" --hive "$work/h/good.db" reg import "$work/delete.reg" && ok || ko "delete 512 levels"

# --- Line ends every editor writes -----------------------------------------------------------
for ends in $'\n' $'\r\n' $'\r\r\n'; do
  printf 'Windows Registry Editor Version 5.00%s%s[HKEY_LOCAL_MACHINE\\SOFTWARE\\Ends]%s"v"="x"%s' "$ends" "$ends" "$ends" "$ends" >"$work/ends.reg"
  timeout 10 "$nvhost" --hive "$work/h/good.db" reg import "$work/ends.reg" 2>"$work/err" && ok || ko "line ends $(printf '%s' "$ends" | od -An -c): $(cat "$work/err")"
done

echo "$passed passed, $failed failed"
[ "$failed" == 0 ]
