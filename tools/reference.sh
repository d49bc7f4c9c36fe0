#!/usr/bin/env bash
# Makes the reference of the installed headers, build/reference/html/index.html, and fails when a
# public name has no comment.
# Usage: reference.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tools/setup.sh --reference
tools/build.sh release DBService
rm -rf build/reference
cmake --install build/release --component development --prefix "$PWD/build/reference/root" >/dev/null
doxygen docs/Doxyfile
