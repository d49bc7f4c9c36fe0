#!/usr/bin/env bash
# Installs the library and uses it as somebody else's project does.
# Usage: check.sh BUILD_FOLDER    of the library, built
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

fail() {
    echo "$*" >&2
    exit 1
}

cmake --install "$build" --prefix "$scratch/root" >/dev/null
program=$source/examples/first_steps.cpp
library=$(find root -name libDBService.so)
export PKG_CONFIG_PATH=$scratch/$(dirname "$library")/pkgconfig
export LD_LIBRARY_PATH=$scratch/$(dirname "$library")

# The README's program is the one that is built and run here.
awk '/^```cpp$/ { on = 1; next } /^```$/ { on = 0 } on' "$source/README.md" >readme.cpp
diff readme.cpp "$program" || fail "README.md shows another program than examples/first_steps.cpp"

cmake -S "$source/tests/consumer" -B by-cmake -G Ninja -DCMAKE_PREFIX_PATH="$scratch/root" \
    -DFIRST_STEPS="$program" >/dev/null
cmake --build by-cmake >/dev/null
by-cmake/first_steps

read -ra flags < <(pkg-config --cflags --libs DBService)
for standard in 11 17; do
    g++ -std=c++$standard -Wall -Wextra -Wpedantic -Werror "$program" -o "by-$standard" "${flags[@]}"
    "./by-$standard"
done

include=${flags[0]#-I}
[[ ! -e $include/dbservice/statement && ! -e $include/dbaccess/pool/Pool.h ]] ||
    fail "internal headers are installed"
while read -r header; do
    g++ -std=c++11 -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I"$include" -x c++ "$header" ||
        fail "$header does not compile by itself"
done < <(find "$include" -name '*.h')

readelf -d "$library" | grep -q 'SONAME.*\[libDBService.so.1\]' || fail "the SONAME is wrong"
foreign=$(nm -DC --defined-only "$library" | cut -d' ' -f3- |
    grep -vE '^((vtable|typeinfo|typeinfo name) for )?(dbservice|dbaccess|schema|ThreadLib)::|^Qz_Write_Log' || true)
[[ -z $foreign ]] || fail "exported without need: $foreign"
internal=$(nm -DC --defined-only "$library" | grep -E 'dbaccess::(sqlite|mariadb|Pool|RowBuffer)' || true)
[[ -z $internal ]] || fail "internals are exported: $internal"
