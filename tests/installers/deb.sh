#!/usr/bin/env bash
# The Debian package from the native build: made by CPack, unpacked into a scratch root, its
# nvhost run on the installed sample scenario, and lintian with no error.
# Usage: deb.sh NATIVE_BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
version=6.1.0.540
failures=0
fail() { echo "FAIL [deb]: $*" >&2; failures=$((failures + 1)); }
step() { echo "== [deb] $*"; }

rm -f "$build"/nvextch_*.deb
(cd "$build" && cpack -G DEB >/dev/null)
deb=$(ls "$build"/nvextch_"$version"_*.deb)
step "$(basename "$deb"): $(stat -c %s "$deb") bytes"

depends=$(dpkg-deb -f "$deb" Depends)
grep -q 'libsqlite3-0' <<<"$depends" || fail "Depends does not name libsqlite3-0: '$depends'"

root=$build/deb-root
rm -rf "$root"
dpkg-deb -x "$deb" "$root"
expected=(usr/bin/nvhost usr/share/nvextch/examples/Demo.reg usr/share/doc/nvextch/copyright
  usr/share/doc/nvextch/changelog.gz)
# The manual page and the completion go in whenever the build made them.
[ -f "$build/doc/nvhost.1" ] && expected+=(usr/share/man/man1/nvhost.1.gz)
[ -f "$build/doc/nvhost.bash-completion" ] && expected+=(usr/share/bash-completion/completions/nvhost)
for f in "${expected[@]}"; do
  [ -f "$root/$f" ] || fail "$f is not in the package"
done

# The installed program on the installed sample, in a hive of its own.
export NVEXTCH_HIVE=$build/deb-root-hive.db
rm -f "$NVEXTCH_HIVE"
nvhost=$root/usr/bin/nvhost
"$nvhost" reg import "$root/usr/share/nvextch/examples/Demo.reg" || fail "reg import of the sample"
for task in SplitCustomer LogLines ReadSettings; do
  status=$("$nvhost" run Demo "$task" --lang en 2>/dev/null) || true
  [ "$status" = 2 ] || fail "run Demo $task printed '$status'"
done
[ "$("$nvhost" var get Demo City)" = Paris ] || fail "City is not Paris"
[ "$("$nvhost" var get Demo DbHost)" = db01 ] || fail "DbHost is not db01"
step "the installed nvhost ran the sample's three tasks"

# Errors fail the check; warnings and notes are shown.
if lintian --fail-on error --tag-display-limit 0 "$deb" >"$build/lintian.txt" 2>&1; then
  step "lintian: no error ($(grep -c '^W:' "$build/lintian.txt" || true) warnings)"
else
  cat "$build/lintian.txt" >&2
  fail "lintian reports errors"
fi
[ "$failures" -eq 0 ] && step "all checks passed" || { echo "== [deb] $failures check(s) failed" >&2; exit 1; }
