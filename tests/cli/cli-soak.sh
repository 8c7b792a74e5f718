#!/usr/bin/env bash
# A bounded soak: runs and imports killed at random instants, again and again; after each
# kill the hive passes the full check and every write is whole (old or new, never half).
# Usage: cli-soak.sh NVHOST [SECONDS]   (default 30)
set -u
nvhost=$1
seconds=${2:-${NV_SOAK_SECONDS:-30}}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export NVEXTCH_HIVE="$work/soak.db"
passed=0
failed=0
ok() { passed=$((passed + 1)); }
ko() { failed=$((failed + 1)); echo "FAIL: $*" >&2; }
reg_file() { { printf 'Windows Registry Editor Version 5.00\r\n\r\n'; cat; } >"$1"; }

# A task of a thousand fields, and an import of a thousand values whose generation shows.
source "$(dirname "$0")/many-fields.sh"
many_fields_task Soak | reg_file "$work/task.reg"
for generation in 1 2; do
  {
    for k in $(seq 1 20); do
      printf '[HKEY_LOCAL_MACHINE\\SOFTWARE\\Soak\\K%d]\r\n' "$k"
      for v in $(seq 1 50); do printf '"v%d"="generation %d"\r\n' "$v" "$generation"; done
    done
  } | reg_file "$work/gen$generation.reg"
done
"$nvhost" reg import "$work/task.reg" && "$nvhost" reg import "$work/gen1.reg" || { echo "cannot set up" >&2; exit 1; }

# reset_variables: every V back to "old", so that a cut run shows.
{ for i in $(seq 1 1000); do printf '"V%d"="old"\r\n' "$i"; done; } >"$work/vars"
{ printf '[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\Soak\\Variables]\r\n'; cat "$work/vars"; } | reg_file "$work/reset.reg"

check_hive() {
  timeout 20 "$nvhost" hive check >"$work/check" 2>&1 && ok || ko "after a kill ($1): $(head -3 "$work/check")"
}

deadline=$((SECONDS + seconds))
rounds=0
generation=1
while [ "$SECONDS" -lt "$deadline" ]; do
  rounds=$((rounds + 1))
  if ((RANDOM % 2)); then
    "$nvhost" reg import "$work/reset.reg" || ko "reset the variables"
    "$nvhost" run Soak Many >/dev/null 2>&1 &
    what=run
  else
    generation=$((3 - generation))
    "$nvhost" reg import "$work/gen$generation.reg" &
    what=import
  fi
  sleep "0.$(printf '%03d' $((RANDOM % 150)))"
  kill -9 $! 2>/dev/null
  wait $! 2>/dev/null
  check_hive "$what"
  if [ "$what" == run ]; then
    timeout 20 "$nvhost" reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Soak\Variables' >"$work/out" || ko "export after a run"
    variables_whole "$work/out" && ok || ko "a run cut short left a variable half-written"
  else
    timeout 20 "$nvhost" reg export 'HKEY_LOCAL_MACHINE\SOFTWARE\Soak' >"$work/out" || ko "export after an import"
    [ "$(grep -a -c '^"v' "$work/out")" == 1000 ] && [ "$(grep -a '^"v' "$work/out" | sed 's/^"v[0-9]*"=//' | sort -u | wc -l)" == 1 ] &&
      ok || ko "an import cut short landed in part"
  fi
done
echo "$rounds rounds: $passed passed, $failed failed"
[ "$failed" == 0 ]
