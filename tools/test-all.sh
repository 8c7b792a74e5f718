#!/usr/bin/env bash
# Every test suite: installs what is missing, builds, runs the native suite (plainly, then
# under the sanitizers), then the fuzzers for a bounded time.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/ensure-packages.sh build-essential cmake ninja-build pkg-config libsqlite3-dev \
  libgtest-dev libgmock-dev googletest libbenchmark-dev clang libclang-rt-14-dev

cmake --preset native >/dev/null
cmake --build --preset native
ctest --preset native

# The same suites under AddressSanitizer, UBSan and bounds-checked containers: a read past the
# end of a buffer fails there and then, instead of now and then with whatever lay beyond it.
cmake --preset sanitize >/dev/null
cmake --build --preset sanitize
ctest --preset sanitize

# The fuzzers compare the engine with its plain reference under the sanitizers.
bash tools/run-fuzzers.sh "${NV_FUZZ_SECONDS:-20}"
bash tools/test-windows.sh
bash tools/test-installers.sh
