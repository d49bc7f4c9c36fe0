#!/bin/sh
# Runs the example programs on the embedded engine, each twice, and with what can go wrong.
# Usage: examples_test.sh DIRECTORY_OF_THE_PROGRAMS SITE_FILE
set -eu
programs=$1
site=$2
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

# refuse EDIT PATTERN: the site, edited by sed, ends in an error that begins so.
refuse() {
    sed "$1" "$site" >edited.json
    expect 1 "^load_site: $2" load_site --data loaded --site edited.json
}

expect 0 '^1 stored, the newest is Main hall' first_steps
expect 0 '^2 stored' first_steps .
expect 1 '^error [0-9]*: .*missing' first_steps missing

expect 0 "^Porter's Yard recorder has 3 channels$" convenience
shows '^As a value: 1062$' '^As an exception: Storing it again: error 1062 (23000)$' \
    "^  2026-03-02 08:03:00 O'Hare's door, number 3$" '^  2026-03-02 08:01:00 face-4.jpg 4$'

expect 0 "^  Users' cameras  *0  *8  *1  *2$" load_site --data loaded/new --site "$site"
expect 0 "^  Users' cameras  *6  *8  *1  *2$" load_site --data loaded/new --site "$site"
shows '^  Recording servers  *4  *5  *1  *1$' \
    "^  Porter's Yard parking  *10.20.0.13:9000  *-  *16$" \
    '^  Platforms 1 to 8 .* 96$' \
    "^  Siobhán O'Hare  *live  *2  *1  *accepted  *refused$" \
    '^  recording  *When closed  *mon-fri 23:00-06:00; sat-sun 23:00-07:00$' \
    '^  Ticket hall recorder at 10.20.2.32:80$' \
    '^    4 Platform 4, lift  *1  *-  *Day and night  *-  */srv/recordings/platform-4$' \
    '^    2 Ticket office, safe  *0, hidden  *-  *When closed  *-  *\\\\recorder5\\c\$\\video$' \
    '^        2 Parking, by turns$' '^          for 30 s  *Parking, west$' \
    '^  Control room 1  *(shared)$' '^          4 Four, lift  *Platform 4, lift$' \
    '^    North doors  *Main hall, north doors  *132.5, 48$' \
    '^    Halls$' '^      All around  *Main hall, all around$' \
    '^Alarms of an hour, page 2$' '^  .* Gate, number plates  *2  *Barrier forced  *input 1$' \
    "^  2026-03-02 08:50:00  *.*hall-0004.jpg  *52  *Pat O'Brien  *61$" \
    '^  Face comparisons  *2  *2  *0  *0$'
# What was deleted, and the capture behind the range.
! grep -E '^ *(Summer relief|Old footbridge|Trial|Counters|West|2026-03-02 09)' output ||
    fail "$program: expected no such line"

place=edited.json:
refuse '5q' "$place .*parse error at line"
refuse 's/9100/99999/' "$place /servers/4/PrivatePort is not a whole number"
refuse 's/"Num": 1,/"Num": 1.5,/' "$place /devices/0/channels/0/Num is not a whole number"
refuse 's/"Failover"/7/' "$place /servers/3/DisplayName is no text"
refuse 's/"Type": 3/"Type": "guard"/' "$place /users/3/Type is no number"
refuse 's/"Ptz"/"PTZ"/' "$place /users/1/cameras/0/PTZ is no field"
refuse 's/"onlineSchedules"/"schedules"/' "$place /schedules is no kind"
refuse 's/"Guid": "[^"]*5c01[^"]*", //' "$place /onlineSchedules/0 has no Guid"
refuse 's/"rights": {/"rights": { "User_Guid": "x",/' "$place /users/0/rights/0/User_Guid is given by"
refuse 's/"ParentGroupGuid"/"then": { "DisplayName": "x" }, "ParentGroupGuid"/' 'Groups of views: changing: there is no'
refuse 's/"delete"/"erase"/' "$place /servers/4/then is neither"
refuse 's/"then": { "DisplayName"/"then": { "Guid"/' "$place /servers/1/then changes the key"
# The last server gets the first one's key, the last user the first one's.
refuse 's/1a05"/1a01"/' 'Recording servers: storing, number 5: error 1062 (23000): '
refuse 's/ac05\(0*\)"/ac01\1"/' 'Users: storing, number 5: error 1062 (23000)$'

expect 0 '--password-file' load_site --help
expect 2 'excludes' load_site --data loaded --server localhost
expect 2 'requires --server' load_site --port 3307
expect 2 'not exist' load_site --site missing.json
expect 1 'error [0-9]* (.*missing.sock' load_site --server "$scratch/missing.sock" --site "$site"
