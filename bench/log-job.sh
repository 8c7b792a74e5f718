#!/usr/bin/env bash
# The log job, end to end: a log of N MiB (CRLF lines) is stored as a scenario variable and
# one positional task takes its first line, its last 100 lines and lines 1000-1999 into three
# variables. `nvhost run` is timed against python3 and mawk doing the same job from the file,
# and the ratios are printed, with each program's peak memory from /usr/bin/time.
#
#   bench/log-job.sh [--nvhost PATH] [SIZE_MIB...]      sizes default to 1 16 64 256
#
# Each size makes its log and hive once (not timed), checks that the three programs agree,
# then times each (the fastest of $runs runs: 15 below 16 MiB, where a millisecond of noise
# would hide what the size adds, else 5).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
nvhost="$root/build/native/host/nvhost"
if [ "${1:-}" = "--nvhost" ]; then nvhost=$2; shift 2; fi
sizes=("$@")
[ ${#sizes[@]} -eq 0 ] && sizes=(1 16 64 256)

bash "$root/tools/ensure-packages.sh" mawk time python3
# Debian's own interpreter, not one a version manager puts first on the PATH behind a shim.
python=/usr/bin/python3
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
  "$python" - "$1" "$2" <<'EOF'
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

# Measures one run of the program itself: its wall time, and its user + system time at
# microseconds from the children's resource usage (/usr/bin/time's own %e, %U and %S have
# only hundredths, and a program run through it would be timed with its start too).
cat >"$work/measure.py" <<'EOF'
import resource, subprocess, sys, time
def cpu():  # of the children reaped so far, those of the programs exec'd before this one too
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime
before = cpu()
begin = time.perf_counter()
subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
wall = time.perf_counter() - begin
print('%.4f %.4f' % (wall, cpu() - before))
EOF

# Prints "seconds cpu_seconds peak_kib" of the command: the fastest of $runs runs (on a
# shared machine the slower runs measure the neighbours), and the peak resident size that
# /usr/bin/time reports for one more.
timed() {
  local best= run i
  for ((i = 0; i < runs; ++i)); do
    run=$("$python" "$work/measure.py" "$@")
    best=$(awk -v run="$run" -v best="$best" 'BEGIN {
      split(run, r, " "); split(best, b, " "); print (best == "" || r[1] + 0 < b[1] + 0) ? run : best }')
  done
  /usr/bin/time -f '%M' -o "$work/time" "$@" >/dev/null 2>&1
  echo "$best $(cat "$work/time")"
}

# The program's fixed cost (start, hive open and check, commit): the same job over the
# shortest log it accepts. The time per MiB above it is what a larger log adds.
make_log 1 "$work/log-1.txt"
head -n 2100 "$work/log-1.txt" >"$work/short.txt"
"$nvhost" --hive "$work/short.db" reg import "$work/task.reg"
"$nvhost" --hive "$work/short.db" var set Logs Log --file "$work/short.txt"

printf '%5s %7s | %-22s %-22s %-22s | %13s %13s | %8s %8s | %9s %8s %11s\n' MiB lines 'nvhost wall (cpu)' \
  'python3 wall (cpu)' 'mawk wall (cpu)' 'py/nv wall' 'nv/mawk wall' 'peak MiB' 'peak/var' 'nv ms/MiB' 'fixed ms' 'above fixed'
for mib in "${sizes[@]}"; do
  log="$work/log-$mib.txt" hive="$work/hive-$mib.db"
  runs=$((mib < 16 ? 15 : 5))
  make_log "$mib" "$log"
  lines=$(wc -l <"$log")
  "$nvhost" --hive "$hive" reg import "$work/task.reg"
  "$nvhost" --hive "$hive" var set Logs Log --file "$log"

  # Same answers from all three before anything is timed.
  "$nvhost" --hive "$hive" run Logs Cut --report "$work/report" >/dev/null
  "$python" "$work/job.py" "$log" "$work/py-"
  mawk -v out="$work/awk-" -f "$work/job.awk" "$log"
  for v in First Last100 Middle; do
    "$nvhost" --hive "$hive" var get Logs "$v" | head -c -1 >"$work/nv-$v"
    cmp -s "$work/nv-$v" "$work/py-$v" && cmp -s "$work/nv-$v" "$work/awk-$v" ||
      { echo "the three programs disagree on $v at $mib MiB" >&2; exit 1; }
  done

  # The files just made are written out first: the system's writing them back in the
  # background would be timed with whichever program ran first. The fixed cost is measured
  # again beside each size, so that both meet the machine in the same state.
  sync
  read -r fixed_s _ _ < <(timed "$nvhost" --hive "$work/short.db" run Logs Cut --report "$work/report")
  read -r nv_s nv_cpu nv_kib < <(timed "$nvhost" --hive "$hive" run Logs Cut --report "$work/report")
  read -r py_s py_cpu _ < <(timed "$python" "$work/job.py" "$log" "$work/py-")
  read -r awk_s awk_cpu _ < <(timed mawk -v out="$work/awk-" -f "$work/job.awk" "$log")
  var_bytes=$(($(wc -c <"$log") * 2))  # the log is ASCII: two bytes a unit in UTF-16
  awk -v mib="$mib" -v lines="$lines" -v nv="$nv_s" -v fixed="$fixed_s" -v py="$py_s" -v aw="$awk_s" -v nvc="$nv_cpu" -v pyc="$py_cpu" \
    -v awc="$awk_cpu" -v kib="$nv_kib" -v bytes="$var_bytes" 'BEGIN {
      printf "%5d %7d | %8.3fs (%6.3fs)     %8.3fs (%6.3fs)     %8.3fs (%6.3fs)     | %12.2fx %12.2fx | %8.1f %7.2fx | %9.2f %8.1f %11.2f\n",
        mib, lines, nv, nvc, py, pyc, aw, awc, py / nv, nv / aw, kib / 1024, kib * 1024 / bytes, nv * 1000 / mib,
        fixed * 1000, (nv - fixed) * 1000 / mib }'
  rm -f "$log" "$hive" "$hive"-*
done
