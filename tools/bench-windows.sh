#!/usr/bin/env bash
# The engine benchmarks on Windows, both architectures, under Wine. Debian ships Google
# Benchmark for Linux only, so its Debian source package is built with each mingw-w64
# toolchain first (into build/<preset>/benchmark). Usage: tools/bench-windows.sh [FILTER]
set -euo pipefail
cd "$(dirname "$0")/.."
filter=${1:-'Memcpy|Split|Find'}
bash tools/ensure-packages.sh cmake ninja-build dpkg-dev g++-mingw-w64-x86-64 g++-mingw-w64-i686 wine

# The source package through a private apt configuration: the machine's sources stay as they are.
src=$PWD/build/benchmark-src
if [ ! -d "$src/tree" ]; then
  mkdir -p "$src/lists/partial" "$src/parts"
  echo "deb-src http://deb.debian.org/debian bookworm main" >"$src/sources.list"
  apt_private=(-o "Dir::Etc::SourceList=$src/sources.list" -o "Dir::Etc::SourceParts=$src/parts"
               -o "Dir::State::Lists=$src/lists")
  apt-get "${apt_private[@]}" update -qq
  (cd "$src" && apt-get "${apt_private[@]}" source --download-only benchmark >/dev/null)
  mkdir -p "$src/tree"
  tar -xzf "$src"/benchmark_*.orig.tar.gz -C "$src/tree" --strip-components=1
fi

export WINEDEBUG=-all
export WINEPREFIX="${WINEPREFIX:-$PWD/build/win64/wineprefix}"
for preset in win64 win32; do
  prefix=$PWD/build/$preset/benchmark
  if [ ! -f "$prefix/lib/cmake/benchmark/benchmarkConfig.cmake" ]; then
    cmake -S "$src/tree" -B "build/$preset/benchmark-build" -G Ninja \
      -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/mingw-$([ "$preset" = win64 ] && echo x86_64 || echo i686).cmake" \
      -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" \
      -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_GTEST_TESTS=OFF -DBENCHMARK_ENABLE_WERROR=OFF >/dev/null
    cmake --build "build/$preset/benchmark-build" --target install >/dev/null
  fi
  cmake --preset "$preset" -DNV_BUILD_BENCH=ON -Dbenchmark_DIR="$prefix/lib/cmake/benchmark" >/dev/null
  cmake --build --preset "$preset" --target engine_bench
  echo "== $preset"
  wine "build/$preset/bench/engine/engine_bench.exe" --benchmark_filter="$filter" </dev/null
done
