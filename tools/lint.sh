#!/usr/bin/env bash
# Checks the format of all C++ files and that their comments are whole, and runs clang-tidy on those
# that have changed since it last found nothing in them or in a header.
# Usage: lint.sh [--fix]    --fix formats; comments are wrapped by hand
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t files < <(find . \( -path ./build -o -path ./run-data -o -path ./.git \) -prune -o \
    -type f \( -name '*.cpp' -o -name '*.h' \) -printf '%P\n' | sort)
if [[ "${1:-}" == --fix ]]; then
    clang-format -i "${files[@]}"
fi
clang-format --dry-run -Werror "${files[@]}"
# A comment is torn where a sentence goes on behind a line of one or two words, or behind a line of
# @param and the like without their indentation.
awk '
    function tell(what) { print FILENAME ":" FNR ": " what; bad = 1 }
    FNR == 1 { short = tagged = 0 }
    length > 100 && /(^ *|  )\/\// { tell("a comment beyond column 100") }
    !/^ *\/\// { short = tagged = 0; next }
    {
        text = $0
        sub(/^ *\/\/[\/!]? ?/, "", text)
        if ((short && text ~ /^[a-z]/) || (tagged && text ~ /^[^@ A-Z]/)) tell("a torn comment")
        short = NF <= 3 && text !~ /[.:]$/
        tagged = text ~ /^@/ || (tagged && text ~ /^ /)
    }
    END { exit bad }
' "${files[@]}"

database=build/debug
[[ -e $database/compile_commands.json ]] || cmake --preset debug >/dev/null
clean=build/lint
mkdir -p "$clean"
settings=$(printf '%s\n' "${files[@]}" | grep '\.h$' | xargs cat .clang-tidy tests/.clang-tidy |
    sha1sum | cut -c1-40)

export database clean settings
check() {
    local mark output
    # What is not built there, as the benchmark, may ask for packages that are not installed.
    grep -qF "$1" "$database/compile_commands.json" || return 0
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
