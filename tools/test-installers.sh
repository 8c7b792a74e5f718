#!/usr/bin/env bash
# The installers: the Debian package of the native build, then the plug-in's MSI of each
# architecture under Wine, each in a fresh prefix of its own. Prints each package's size and
# how long each install takes.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/ensure-wine32.sh
bash tools/ensure-packages.sh cmake ninja-build g++ libsqlite3-dev dpkg-dev fakeroot lintian wixl msitools \
  g++-mingw-w64-x86-64 g++-mingw-w64-i686 mingw-w64-tools

cmake --preset native >/dev/null
cmake --build --preset native
bash tests/installers/deb.sh build/native

cmake --preset win64 >/dev/null
cmake --build --preset win64 --target msi nvhost nvhoststandin
bash tests/installers/msi-wine.sh x64 build/win64 examples

# The x86 package is tried in a 32-bit prefix, which needs Wine's 32-bit half.
if [ -e /usr/lib/i386-linux-gnu/wine/i386-unix/ntdll.so ]; then
  cmake --preset win32 >/dev/null
  cmake --build --preset win32 --target msi nvhost nvhoststandin
  bash tests/installers/msi-wine.sh x86 build/win32 examples
elif [ "${CI:-}" = true ]; then
  echo "FAIL: no 32-bit Wine here (package wine32:i386): the x86 MSI cannot be tried" >&2
  exit 1
else
  echo "== no 32-bit Wine here: the x86 MSI is not tried"
fi
