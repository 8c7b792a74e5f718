#!/usr/bin/env bash
# Builds the fuzz preset and runs each fuzzer for a bounded time: $1 seconds each (default 20).
# Fails at the first crash, sanitizer report or difference (between the engine and its
# reference, or between a regedit file read whole and in pieces); the input that caused it is
# kept beside the fuzzer's corpus.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${1:-20}"
fuzzers=(FuzzSplit FuzzExtractPieces FuzzFindValues FuzzRegFile)
build=build/fuzz
runs="$build/runs"

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --parallel "${NV_BUILD_JOBS:-2}" --target "${fuzzers[@]}"

status=0
for fuzzer in "${fuzzers[@]}"; do
  mkdir -p "$runs/$fuzzer/corpus"
  log="$runs/$fuzzer/last.log"
  if "$build/fuzz/$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
       -artifact_prefix="$runs/$fuzzer/" "$runs/$fuzzer/corpus" >"$log" 2>&1; then
    echo "$fuzzer: $(grep -Eo 'Done [0-9]+ runs in [0-9]+ second' "$log" || echo done), no difference"
  else
    echo "$fuzzer: FAILED (log: $log)" >&2
    grep -E 'differ|engine:|reference:|ERROR|SUMMARY|Test unit written' "$log" >&2 || tail -n 30 "$log" >&2
    status=1
  fi
done
exit "$status"
