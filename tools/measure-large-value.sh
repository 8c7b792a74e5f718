#!/usr/bin/env bash
# Time and peak memory of a large variable through nvhost: `var set --file`, then
# `var get --output`, compared byte for byte. Usage: tools/measure-large-value.sh [MiB]
# (default 100); needs a native build (cmake --preset native && cmake --build --preset native).
set -eu
cd "$(dirname "$0")/.."
bash tools/ensure-packages.sh time
size=${1:-100}
nvhost=${NVHOST:-build/native/host/nvhost}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
head -c $((size * 1048576)) /dev/zero | tr '\0' 'v' >"$work/value"
export NVEXTCH_HIVE="$work/hive.db"
echo "a value of $size MiB:"
/usr/bin/time -f "  var set --file:   %e s, peak RSS %M KiB" "$nvhost" var set Large V --file "$work/value"
/usr/bin/time -f "  var get --output: %e s, peak RSS %M KiB" "$nvhost" var get Large V --output "$work/back"
cmp -s "$work/value" "$work/back" && echo "  read back: identical" || { echo "  read back: DIFFERENT"; exit 1; }
