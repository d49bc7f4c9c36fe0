#!/usr/bin/env bash
# Installs the packages into a root of their own, uses the library as somebody else's project does,
# and removes them.
# Usage: check.sh [--keep-interface]    after tools/package.sh
#   --keep-interface  keeps the interface, for later ones to be compared with, and checks nothing
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
packages=$source/build/packages
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

fail() {
    echo "$*" >&2
    exit 1
}

# In a root without any other package: what they depend on is here anyway, outside of it.
mkdir -p root/var/lib/dpkg/{info,updates}
touch root/var/lib/dpkg/{status,available}
in_root() {
    PATH=$PATH:/usr/sbin:/sbin fakeroot dpkg --root="$scratch/root" --log=/dev/null \
        --force-depends "$@" >dpkg.log 2>&1 || {
        cat dpkg.log >&2
        fail "dpkg $1 failed"
    }
}
in_root --install "$packages"/*.deb

library=$(find root -name libDBService.so)
include=$scratch/root/usr/include/DBService
interface=$source/tests/consumer/interface.abi.xz
describe_interface() {
    abidw --exported-interfaces-only --drop-private-types --drop-undefined-syms --no-show-locs \
        --no-parameter-names --no-corpus-path --no-comp-dir-path --no-elf-needed \
        --headers-dir "$include" --debug-info-dir root/usr/lib/debug "$library"
}
if [[ "${1:-}" == --keep-interface ]]; then
    describe_interface | xz -9 >"$interface"
    exit
fi
program=$source/examples/first_steps.cpp

# A parent project keeps its names, flags and tests.
cmake -S "$source/tests/consumer" -B parent -G Ninja -DFIRST_STEPS="$program" \
    -DDBSERVICE_SOURCE="$source" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
! grep '"command":.*consumer\.dir' parent/compile_commands.json | grep -e -Wshadow -e -Werror ||
    fail "the library's flags reach its parent's programs"
[[ $(ctest --test-dir parent -N) == *"Total Tests: 10"* ]] ||
    fail "the library's tests are its parent's too"

export PKG_CONFIG_SYSROOT_DIR=$scratch/root PKG_CONFIG_PATH=$scratch/${library%/*}/pkgconfig
export LD_LIBRARY_PATH=$scratch/${library%/*}

version=$(pkg-config --modversion DBService)
[[ $(dpkg-parsechangelog -l "$source/debian/changelog" -S Version) == "$version" ]] ||
    fail "debian/changelog has another version than $version"
grep -q "^## $version" "$source/CHANGELOG.md" || fail "CHANGELOG.md has no version $version"

# The README's program is the one that is built and run here.
awk '/^```cpp$/ { on = 1; next } /^```$/ { on = 0 } on' "$source/README.md" >readme.cpp
diff readme.cpp "$program" || fail "README.md shows another program than examples/first_steps.cpp"

read -ra flags < <(pkg-config --cflags --libs DBService)
[[ ${flags[0]} == "-I$include" ]] || fail "pkg-config tells ${flags[0]}"
for standard in 11 17 20; do
    cmake -S "$source/tests/consumer" -B "cmake-$standard" -G Ninja -DFIRST_STEPS="$program" \
        -DCMAKE_PREFIX_PATH="$scratch/root/usr" -DCMAKE_CXX_STANDARD=$standard >/dev/null
    cmake --build "cmake-$standard" >/dev/null
    "cmake-$standard/consumer"

    for name in "$program" "$source/tests/consumer/version.cpp"; do
        g++ -std=c++$standard -Wall -Wextra -Wpedantic -Werror "$name" -o "by-$standard" "${flags[@]}"
        "./by-$standard"
    done
done

[[ ! -e $include/dbservice/statement && ! -e $include/dbaccess/pool/Pool.h ]] ||
    fail "internal headers are installed"
find "$include" -name '*.h' -print0 | xargs -0 -P "$(nproc)" -I{} g++ -std=c++11 -Wall -Wextra \
    -Wpedantic -Weffc++ -Werror -fsyntax-only -I"$include" -x c++ {} ||
    fail "a header does not compile by itself"

readelf -d "$library" | grep -q 'SONAME.*\[libDBService.so.1\]' || fail "the SONAME is wrong"
own='((vtable|typeinfo|typeinfo name) for )?(dbservice|dbaccess|schema|ThreadLib)::|Qz_Write_Log'
foreign=$(nm -DC --defined-only "$library" | cut -d' ' -f3- |
    grep -vE "^DBSERVICE_1$|^($own).*@@DBSERVICE_1$" || true)
[[ -z $foreign ]] || fail "exported without need: $foreign"
internal=$(nm -DC --defined-only "$library" | grep -E 'dbaccess::(sqlite|mariadb|Pool|RowBuffer)' || true)
[[ -z $internal ]] || fail "internals are exported: $internal"

# The tool, which needs nothing of the library's packages, with its manual and completion.
PATH=$scratch/root/usr/bin:$PATH
[[ $(dbservicectl --version) == "$version" ]] || fail "dbservicectl has another version than $version"
dbservicectl --host "sqlite:$scratch" --database vms schema create 2>/dev/null
manual=$(zcat root/usr/share/man/man1/dbservicectl.1.gz)
for word in $(dbservicectl --help-all | grep -oE -- '^ *(--)?[a-z][a-z-]+' | sort -u); do
    [[ $manual == *"${word#-}"* ]] || fail "the manual says nothing of $word"
done
bash -n root/usr/share/bash-completion/completions/dbservicectl

# What is there must stay as it is; what is new breaks nobody. Descriptions are compared, not the
# library itself: there changes of a record's layout would pass, as those of a type of no header.
if [[ $(dpkg --print-architecture) == amd64 ]]; then
    xz -d <"$interface" >kept.abi
    describe_interface >now.abi
    abidiff --no-added-syms kept.abi now.abi ||
        fail "Programs built against the last release would break. If that is meant, see CONTRIBUTING.md"
fi

in_root --purge libdbservice-dev libdbservice1-dbgsym libdbservice1 \
    dbservice-tools-dbgsym dbservice-tools
left=$(find root -mindepth 1 -not -path 'root/var*')
[[ -z $left ]] || fail "left behind by the packages: $left"
