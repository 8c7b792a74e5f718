#!/usr/bin/env bash
# The main job: builds nvhost, imports the sample scenario into the default hive, runs its
# three tasks, and shows the variables they set, their statuses and the run report.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/ensure-packages.sh build-essential cmake ninja-build pkg-config libsqlite3-dev \
  libgtest-dev libgmock-dev googletest libbenchmark-dev

cmake --preset native >/dev/null
cmake --build --preset native --target nvhost >/dev/null
nvhost=build/native/host/nvhost
report=build/native/demo-report.log
rm -f "$report"

echo "== importing examples/Demo.reg into the hive (${NVEXTCH_HIVE:-default location})"
"$nvhost" reg import examples/Demo.reg

for task in SplitCustomer LogLines ReadSettings; do
  printf '== run Demo %s -> status ' "$task"
  "$nvhost" run Demo "$task" --report "$report" --lang en
done

echo "== variables"
for variable in Customer LastName FirstName City Zip FirstLine LastLine MiddleLines Settings DbHost DbPort DbUser; do
  printf '  %-12s = ' "$variable"
  "$nvhost" var get Demo "$variable" | tr -d '\r' | sed '2,$s/^/                 /'
done

echo "== statuses"
for task in SplitCustomer LogLines ReadSettings; do
  printf '  %-14s %s\n' "$task" "$("$nvhost" status Demo "$task")"
done

echo "== actions of ReadSettings"
"$nvhost" actions Demo ReadSettings --lang en | tr -d '\r' | sed 's/^/  /'

echo "== report ($report)"
sed 's/^/  /' "$report"
