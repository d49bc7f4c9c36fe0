#!/bin/sh
# Runs the example programs on the embedded engine.
# Usage: examples_test.sh DIRECTORY_OF_THE_PROGRAMS TOOL SITE_FILE
set -eu
programs=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

fail() {
    echo "$1, but:" >&2
    cat output >&2
    exit 1
}

# shows PATTERN...: each matches a line of the last output.
shows() {
    for pattern in "$@"; do
        grep -q -e "$pattern" output || fail "$program: expected '$pattern'"
    done
}

# expect CODE PATTERN PROGRAM ARGUMENT...: the exit code, and a line of the output.
expect() {
    code=$1 pattern=$2 program=$programs/$3
    shift 3
    status=0
    "$program" "$@" >output 2>&1 || status=$?
    [ "$status" -eq "$code" ] || fail "$program $*: expected exit code $code, got $status"
    shows "$pattern"
}

expect 0 '^1 stored, the newest is Main hall' first_steps
expect 0 '^2 stored' first_steps .
expect 1 '^error [0-9]*: .*missing' first_steps missing

expect 0 "^Porter's Yard recorder has 3 channels$" convenience
shows '^As a value: 1062$' '^As an exception: Storing it again: error 1062 (23000)$' \
    "^  2026-03-02 08:03:00 O'Hare's door, number 3$" '^  2026-03-02 08:01:00 face-4.jpg 4$'

export DBSERVICE_HOST=sqlite:. DBSERVICE_DATABASE=site
"$2" schema create >output 2>&1
"$2" import "$3" >output 2>&1
echo '9 trains, 1 track' >password
expect 0 'Tomás Herrera is logged in' night_shift 'Tomás Herrera' <password
shows '^  Main hall, north doors: live recordings moves$' "Somebody's bag" '^1 cleared'
expect 1 'No user Mei Lin Chow' night_shift 'Mei Lin Chow' <password
