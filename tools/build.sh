#!/usr/bin/env bash
# Configures and builds a preset without a word, unless it fails.
# Usage: build.sh PRESET [TARGET...]    all targets when none is named
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset=$1
shift
log=build/$preset.log
mkdir -p build
targets=()
[[ $# -eq 0 ]] || targets=(--target "$@")

exec 9>"build/$preset.lock" # one at a time
flock 9
# A folder that was configured before the project was moved or copied still means the old place.
cache=build/$preset/CMakeCache.txt
if [[ -e $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "$cache"; then
    rm -rf "build/$preset"
fi

echo "Building $preset" >&2
if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "${targets[@]}"; } >"$log" 2>&1
then
    tail -n 60 "$log" >&2
    echo "The build failed; all of it is in $log" >&2
    exit 1
fi
