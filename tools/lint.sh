#!/usr/bin/env bash
# Checks the format of all C++ files, and runs clang-tidy on those that have changed since it last
# found nothing in them or in a header. Usage: lint.sh [--fix]    --fix formats
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t files < <(find . \( -path ./build -o -path ./run-data -o -path ./.git \) -prune -o \
    -type f \( -name '*.cpp' -o -name '*.h' \) -printf '%P\n' | sort)
if [[ "${1:-}" == --fix ]]; then
    clang-format -i "${files[@]}"
fi
clang-format --dry-run -Werror "${files[@]}"

database=build/debug
[[ -e $database/compile_commands.json ]] || cmake --preset debug >/dev/null
clean=build/lint
mkdir -p "$clean"
settings=$(printf '%s\n' "${files[@]}" | grep '\.h$' | xargs cat .clang-tidy tests/.clang-tidy |
    sha1sum | cut -c1-40)

export database clean settings
check() {
    local mark output
    mark=$clean/$( (echo "$settings" "$1" && cat "$1") | sha1sum | cut -c1-40)
    [[ ! -e $mark ]] || return 0
    if output=$(clang-tidy --quiet -p "$database" "$1" 2>&1); then
        touch "$mark"
    else
        grep -v ' warnings generated' <<<"$output"
        return 1
    fi
}
export -f check
printf '%s\n' "${files[@]}" | grep '\.cpp$' | xargs -P "$(nproc)" -I{} bash -c 'check {}'
