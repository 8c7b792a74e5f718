#!/usr/bin/env bash
# What wixl leaves out of the package, written into it with msibuild:
# - the DLL's version in the File table, which the installer compares when it repairs or
#   upgrades;
# - an upgrade that also replaces an installed build of the same version: the installer
#   compares only the first three fields of a version, and every build has a product code
#   of its own, so without this a rebuild would install beside the one it should replace.
# Usage: finish-msi.sh PACKAGE.msi VERSION
set -euo pipefail
msi=$1 version=$2
msibuild "$msi" -q "UPDATE File SET Version = '$version' WHERE File = 'NVextch.dll'"
# The row is written again (its attributes are part of its key): 1 keeps the features'
# states, 512 makes the maximum version inclusive.
read -r code max < <(msiinfo export "$msi" Upgrade | tr -d '\r' | awk -F'\t' '$7 == "WIX_UPGRADE_DETECTED" { print $1, $3 }')
[ -n "$code" ] && [ -n "$max" ] || { echo "finish-msi: no upgrade row in $msi" >&2; exit 1; }
msibuild "$msi" -q "DELETE FROM Upgrade WHERE ActionProperty = 'WIX_UPGRADE_DETECTED'"
msibuild "$msi" -q "INSERT INTO Upgrade (UpgradeCode, VersionMax, Attributes, ActionProperty) VALUES ('$code', '$max', 513, 'WIX_UPGRADE_DETECTED')"
