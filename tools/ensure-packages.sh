#!/usr/bin/env bash
# Installs with apt-get whatever of the named Debian packages is missing.
set -euo pipefail
missing=()
for p in "$@"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "installing: ${missing[*]}"
SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
# With i386 added for the 32-bit Wine, one index (the security suite's i386) may fail to
# download; the install below says whether what it needs was there.
$SUDO apt-get update -qq || true
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
