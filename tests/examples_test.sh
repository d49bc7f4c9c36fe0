#!/bin/sh
# Runs the example programs on the embedded engine, each twice, and with what can go wrong.
# Usage: examples_test.sh DIRECTORY_OF_THE_PROGRAMS SITE_FILE
set -eu
programs=$1
site=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

# expect CODE PATTERN PROGRAM ARGUMENT...: the exit code, and a line of the output.
expect() {
    code=$1 pattern=$2 program=$programs/$3
    shift 3
    status=0
    "$program" "$@" >output 2>&1 || status=$?
    if [ "$status" -eq "$code" ] && grep -q -e "$pattern" output; then return; fi
    echo "$program $*: expected exit code $code and '$pattern', got $status and:" >&2
    cat output >&2
    exit 1
}

# refuse EDIT PATTERN: the site, edited by sed, is refused and the place named.
refuse() {
    sed "$1" "$site" >edited.json
    expect 1 "edited.json: .*$2" load_site --data loaded --site edited.json
}

expect 0 '^1 stored, the newest is Main hall' first_steps
expect 0 '^2 stored' first_steps .
expect 1 '^error [0-9]*: .*missing' first_steps missing

expect 0 'Recording servers  *0  *5  *1  *1$' load_site --data loaded/new --site "$site"
expect 0 "^  Porter's Yard parking  *10.20.0.13:9000  *-  *16$" load_site --data loaded/new --site "$site"
expect 0 '^  Platforms 1 to 8 .* 96$' load_site --data loaded/new --site "$site"
expect 0 'Recording servers  *4  *5  *1  *1$' load_site --data loaded/new --site "$site"

refuse '5q' 'parse error at line'
refuse 's/9100/99999/' 'PrivatePort of "4c1f0a52-7d0e-4d53-9a3b-0b6c1c8e1a05"'
refuse 's/"Failover"/7/' '(/servers/3/DisplayName)'
refuse "s/\"DisplayName\": \"Failover\",//" "(/servers/3) key 'DisplayName'"
refuse 's/"delete"/"erase"/' '(/servers/4/then)'
# The last server gets the first one's key.
sed 's/1a05"/1a01"/' "$site" >edited.json
expect 1 '1a01: error 1062 (23000)' load_site --data loaded --site edited.json

expect 0 '--password-file' load_site --help
expect 2 'excludes' load_site --data loaded --server localhost
expect 2 'requires --server' load_site --port 3307
expect 2 'not exist' load_site --site missing.json
expect 1 'error [0-9]* (.*missing.sock' load_site --server "$scratch/missing.sock" --site "$site"
