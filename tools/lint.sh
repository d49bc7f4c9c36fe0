#!/usr/bin/env bash
# Checks the format of all C++ files, and runs clang-tidy on those that have changed since it last
# found nothing in them or in a header. Usage: lint.sh [--fix]    --fix formats
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t files < <(git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h')
if [[ "${1:-}" == --fix ]]; then
    clang-format -i "${files[@]}"
fi
clang-format --dry-run -Werror "${files[@]}"

database=build/debug
[[ -e $database/compile_commands.json ]] || cmake --preset debug >/dev/null
clean=build/lint
mkdir -p "$clean"
headers=$(printf '%s\n' "${files[@]}" | grep '\.h$' | xargs cat .clang-tidy tests/.clang-tidy | sha1sum | cut -c1-40)

export database clean headers
check() {
    local mark
    mark=$clean/$( (echo "$headers" && cat "$1") | sha1sum | cut -c1-40)
    [[ ! -e $mark ]] || return 0
    clang-tidy --quiet -p "$database" "$1" 2>/dev/null && touch "$mark"
}
export -f check
printf '%s\n' "${files[@]}" | grep '\.cpp$' | grep -v '^tests/consumer/' |
    xargs -P "$(nproc)" -I{} bash -c 'check {}'
