#!/usr/bin/env bash
# Builds the Debian packages from the tree as it is, into build/packages, and checks them by lintian.
# Usage: package.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tools/setup.sh --package
packages=build/packages
log=build/packages.log
rm -rf "$packages"
mkdir -p "$packages/source"
# Debian's tools write beside the source, and want nothing in it but the source.
tar -c --exclude=./build --exclude=./run-data --exclude=./.git . | tar -x -C "$packages/source"

export DEB_BUILD_OPTIONS=${DEB_BUILD_OPTIONS-terse}
check() {
    lintian --tag-display-limit 0 --info --fail-on error,warning "$packages"/*.changes
}
echo "Building packages" >&2
if ! { (cd "$packages/source" && dpkg-buildpackage --no-sign) && check; } >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    echo "The packages could not be built; all of it is in $log" >&2
    exit 1
fi
rm -rf "$packages/source"
ls "$packages"/*.deb
