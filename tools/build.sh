#!/usr/bin/env bash
# Configures and builds a preset, and shows its output only when it fails.
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

build() {
    cmake --preset "$preset" && cmake --build --preset "$preset" "${targets[@]}"
}
# Writes what it reads to the log, and how far it is to a terminal.
report() {
    local line
    while IFS= read -r line; do
        printf '%s\n' "$line"
        [[ ! -t 2 || ! $line =~ ^\[([0-9]+)/([0-9]+)\] ]] ||
            printf '\r\e[KBuilding %s: %d of %d' "$preset" "${BASH_REMATCH[@]:1}" >&2
    done
    [[ ! -t 2 ]] || printf '\r\e[K' >&2
}
[[ -t 2 ]] || echo "Building $preset" >&2
if ! build 2>&1 | report >"$log"; then
    tail -n 60 "$log" >&2
    echo "The build failed; all of it is in $log" >&2
    exit 1
fi
