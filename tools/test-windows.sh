#!/usr/bin/env bash
# The Windows builds: installs what is missing (Wine for both architectures), builds win64
# and win32 and runs their suites under Wine against Wine's registry. win32 is the product
# the hosts load: in CI (CI=true) a 32-bit Wine that does not answer fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/ensure-wine32.sh
bash tools/ensure-packages.sh cmake ninja-build googletest g++-mingw-w64-x86-64 g++-mingw-w64-i686 \
  mingw-w64-tools xvfb xdotool

# A prefix of our own, so the suites neither see nor touch anyone else's registry. One
# prefix serves both architectures; it must have been made by a Wine that has its 32-bit
# half, or no program at all starts in it.
export WINEPREFIX="$PWD/build/win64/wineprefix"
export WINEDEBUG=-all
# No Mono or Gecko installer prompts while the prefix is made.
export WINEDLLOVERRIDES="mscoree,mshtml="

if [ -f "$WINEPREFIX/system.reg" ] && [ ! -f "$WINEPREFIX/drive_c/windows/syswow64/kernel32.dll" ]; then
  echo "== the Wine prefix $WINEPREFIX was made without 32-bit Wine: making it again"
  wineserver -k 2>/dev/null || true
  rm -rf "$WINEPREFIX"
fi
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  echo "== making the Wine prefix $WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  wine wineboot -i </dev/null >/dev/null 2>&1
  wineserver -w
fi

# The dialog suites need a display: a virtual one of our own, on the first free number.
xvfb_pid=""
for n in $(seq 90 130); do
  [ -e "/tmp/.X$n-lock" ] || [ -e "/tmp/.X11-unix/X$n" ] || { display=":$n"; break; }
done
Xvfb "$display" -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
export DISPLAY="$display"
for _ in $(seq 50); do [ -e "/tmp/.X11-unix/X${display#:}" ] && break; sleep 0.1; done

# One server for the whole run: each test program then starts in tens of milliseconds, not
# half a second. Stopped however the run ends, with the display.
stop_wine() {
  wineserver -k 2>/dev/null || true
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
}
trap stop_wine EXIT
wineserver -p 2>/dev/null || true  # one is running already: that one then
# The first program of a server session starts Wine's own services, which live as long as
# the server and keep whatever output they inherit open: start them here, not under CTest,
# which would wait for that output to close.
wine wineboot </dev/null >/dev/null 2>&1
# No window manager runs on the virtual display: Wine draws the windows' frames itself,
# so that the dialog pictures show their title bars.
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /t REG_SZ /d N /f </dev/null >/dev/null 2>&1

cmake --preset win64 >/dev/null
cmake --build --preset win64
ctest --preset win64 </dev/null

cmake --preset win32 >/dev/null
cmake --build --preset win32
# Without a working 32-bit Wine a 32-bit program does not run, yet its exit status may say
# success: ask it for something it prints.
listed=$(wine build/win32/tests/common/common_tests.exe --gtest_list_tests </dev/null 2>/dev/null || true)
if grep -q '^Conversions\.' <<<"$listed"; then
  ctest --preset win32 </dev/null
elif [ "${CI:-}" = true ]; then
  echo "== FAIL: the 32-bit Wine does not run the win32 build" >&2
  exit 1
else
  echo "== no working 32-bit Wine here: the win32 suites are not run (CI fails on this)"
fi
