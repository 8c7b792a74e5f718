#!/usr/bin/env bash
# The log job, end to end: a log of N MiB (CRLF lines) is stored as a scenario variable and
# one positional task takes its first line, its last 100 lines and lines 1000-1999 into three
# variables. `nvhost run` is timed against python3 and mawk doing the same job from the file,
# each with /usr/bin/time, and the ratios are printed.
#
#   bench/log-job.sh [--nvhost PATH] [SIZE_MIB...]      sizes default to 1 16 64 256
#
# Each size makes its log and hive once (not timed), checks that the three programs agree,
# then times each (the fastest of three runs).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
nvhost="$root/build/native/host/nvhost"
if [ "${1:-}" = "--nvhost" ]; then nvhost=$2; shift 2; fi
sizes=("$@")
[ ${#sizes[@]} -eq 0 ] && sizes=(1 16 64 256)

bash "$root/tools/ensure-packages.sh" mawk time python3
[ -x "$nvhost" ] || { echo "no nvhost at $nvhost: build the native preset first" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cat >"$work/task.reg" <<'EOF'
Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\SOFTWARE\NOVRA\Scenarios\Logs\Taches\Cut]
"Type"=dword:00000027
"Fonction"=dword:00000001
"Chaine"="@Log"
"Separateur"=hex(1):0d,00,0a,00,00,00
"Fields.Count"=dword:00000003
"Fields(1).Var"="@First"
"Fields(1).Start"="0"
"Fields(1).End"="1"
"Fields(1).ShowSep"="False"
"Fields(2).Var"="@Last100"
"Fields(2).Start"="-101"
"Fields(2).End"="0"
"Fields(2).ShowSep"="False"
"Fields(3).Var"="@Middle"
"Fields(3).Start"="999"
"Fields(3).End"="1999"
"Fields(3).ShowSep"="False"
EOF

# The log ends with CRLF, so its last piece is empty: start -101 takes the last 100 lines.
cat >"$work/job.py" <<'EOF'
import sys
with open(sys.argv[1], newline='') as f:
    lines = f.read().split('\r\n')
out = sys.argv[2]
for name, text in (('First', lines[0]), ('Last100', '\r\n'.join(lines[-101:-1])),
                   ('Middle', '\r\n'.join(lines[999:1999]))):
    with open(out + name, 'w', newline='') as f:
        f.write(text)
EOF

cat >"$work/job.awk" <<'EOF'
BEGIN { RS = "\r\n"; ORS = "" }
NR == 1 { printf "%s", $0 > (out "First") }
NR >= 1000 && NR <= 1999 { printf "%s%s", (NR > 1000 ? "\r\n" : ""), $0 > (out "Middle") }
{ ring[NR % 100] = $0 }
END { for (i = NR - 99; i <= NR; i++) printf "%s%s", (i > NR - 99 ? "\r\n" : ""), ring[i % 100] > (out "Last100") }
EOF

make_log() {  # SIZE_MIB FILE: CRLF lines of about 70 bytes, ending with CRLF
  python3 - "$1" "$2" <<'EOF'
import sys
target = int(sys.argv[1]) << 20
levels = ('INFO ', 'WARN ', 'DEBUG', 'ERROR')
parts, size, i = [], 0, 0
while True:
    line = '2026-11-23 04:%02d:%02d.%03d %s [worker-%02d] request %07d served in %d ms\r\n' % (
        i // 60000 % 60, i // 1000 % 60, i % 1000, levels[i % 4], i % 16, i, i % 97)
    if size + len(line) > target: break
    parts.append(line); size += len(line); i += 1
open(sys.argv[2], 'w', newline='').write(''.join(parts))
EOF
}

# Prints "seconds peak_kib" of the command: the wall time at microseconds (time's own %e
# has only hundredths) and the peak resident size from /usr/bin/time, the fastest of three
# runs (the machine may be shared; the slower runs measure the neighbours).
timed() {
  local best=
  for _ in 1 2 3; do
    local begin=$EPOCHREALTIME
    /usr/bin/time -f '%M' -o "$work/time" "$@" >/dev/null 2>&1
    local end=$EPOCHREALTIME
    best=$(awk -v b="$begin" -v e="$end" -v best="$best" -v kib="$(cat "$work/time")" \
      'BEGIN { s = e - b; if (best == "" || s < best + 0) printf "%.4f %d", s, kib; else print best }')
  done
  echo "$best"
}

printf '%6s %6s | %9s %9s %9s | %9s %9s | %9s %8s | %11s\n' MiB lines nvhost python3 mawk 'py/nv' 'nv/mawk' \
  'peak MiB' 'peak/var' 'nv ms/MiB'
for mib in "${sizes[@]}"; do
  log="$work/log-$mib.txt" hive="$work/hive-$mib.db"
  make_log "$mib" "$log"
  lines=$(wc -l <"$log")
  "$nvhost" --hive "$hive" reg import "$work/task.reg"
  "$nvhost" --hive "$hive" var set Logs Log --file "$log"

  # Same answers from all three before anything is timed.
  "$nvhost" --hive "$hive" run Logs Cut --report "$work/report" >/dev/null
  python3 "$work/job.py" "$log" "$work/py-"
  mawk -v out="$work/awk-" -f "$work/job.awk" "$log"
  for v in First Last100 Middle; do
    "$nvhost" --hive "$hive" var get Logs "$v" | head -c -1 >"$work/nv-$v"
    cmp -s "$work/nv-$v" "$work/py-$v" && cmp -s "$work/nv-$v" "$work/awk-$v" ||
      { echo "the three programs disagree on $v at $mib MiB" >&2; exit 1; }
  done

  read -r nv_s nv_kib < <(timed "$nvhost" --hive "$hive" run Logs Cut --report "$work/report")
  read -r py_s _ < <(timed python3 "$work/job.py" "$log" "$work/py-")
  read -r awk_s _ < <(timed mawk -v out="$work/awk-" -f "$work/job.awk" "$log")
  units=$(python3 -c "import sys; print(len(open(sys.argv[1], newline='').read().encode('utf-16-le')) // 2)" "$log")
  awk -v mib="$mib" -v lines="$lines" -v nv="$nv_s" -v py="$py_s" -v aw="$awk_s" -v kib="$nv_kib" -v units="$units" \
    'BEGIN { printf "%6d %6d | %8.3fs %8.3fs %8.3fs | %8.2fx %8.2fx | %9.1f %7.2fx | %11.2f\n",
             mib, lines, nv, py, aw, py / nv, nv / aw, kib / 1024, kib * 1024 / (units * 2), nv * 1000 / mib }'
  rm -f "$log" "$hive" "$hive"-*
done
