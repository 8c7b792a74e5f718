#!/usr/bin/env bash
# Wine's 32-bit half, which runs the i686 builds. Debian's security suite has no i386 index
# on some mirrors, so both architectures' Wine libraries come from the main suite; naming
# both keeps apt from removing wine64 to satisfy the i386 side.
set -euo pipefail
installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q "install ok installed"; }
installed wine && installed wine32:i386 && installed libwine:amd64 && exit 0
SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
echo "installing: the 32-bit Wine"
dpkg --print-foreign-architectures | grep -qx i386 || $SUDO dpkg --add-architecture i386
# One index failing to download (the security suite's i386) is expected; the install says
# whether what it needs was there.
$SUDO apt-get update -qq || true
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq -t bookworm --no-install-recommends \
  wine wine64 wine64-tools wine32:i386 libwine:amd64 libwine:i386 \
  libgstreamer-plugins-base1.0-0:amd64 libgstreamer-plugins-base1.0-0:i386 >/dev/null
