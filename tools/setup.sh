#!/usr/bin/env bash
# Installs the Debian packages that are missing to build libDBService.
# Usage: setup.sh [--test | --cluster | --bench | --package | --reference]
#   with what only ./test, its cluster tests, bench/run, tools/package.sh or tools/reference.sh needs
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packages=(g++ cmake ninja-build pkg-config libmariadb-dev libsqlite3-dev libspdlog-dev libfmt-dev
    libcli11-dev nlohmann-json3-dev uuid-dev libunistring-dev libssl-dev
    libgtest-dev libgmock-dev)
packaging=(debhelper dpkg-dev fakeroot lintian)
if [[ "${1:-}" == --test || "${1:-}" == --cluster ]]; then
    # The server's core package brings the program alone: no service is set up or started.
    packages+=(mariadb-server-core mariadb-client-core openssl clang-format clang-tidy
        valgrind clang libclang-rt-dev "${packaging[@]}" abigail-tools doxygen)
    [[ $1 == --test ]] || packages+=(galera-4)
elif [[ "${1:-}" == --bench ]]; then
    packages+=(mariadb-server-core mariadb-client-core libsoci-dev libpoco-dev
        python3-matplotlib)
elif [[ "${1:-}" == --package ]]; then
    packages+=("${packaging[@]}")
elif [[ "${1:-}" == --reference ]]; then
    packages+=(doxygen)
fi

fail() {
    echo "$*" >&2
    exit 1
}

command -v dpkg-query >/dev/null ||
    fail "This is made for Debian 12, whose packages it needs: ${packages[*]}"
installed=$(dpkg-query -W -f '${db:Status-Status} ${Package} ' "${packages[@]}" 2>/dev/null || true)
missing=()
for package in "${packages[@]}"; do
    [[ " $installed" == *" installed $package "* ]] || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=(env)
if [[ $EUID -ne 0 ]]; then
    as_root=(sudo)
    [[ -t 0 ]] || as_root+=(-n) # nobody is there to type a password
    command -v sudo >/dev/null && "${as_root[@]}" true ||
        fail "Packages are missing. As root: apt-get install --no-install-recommends ${missing[*]}"
    as_root+=(env)
fi

apt() {
    "${as_root[@]}" DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=600 "$@"
}
install() {
    apt install -y --no-install-recommends "${missing[@]}"
}
# An installation that was interrupted is finished first. The package lists are only fetched when
# there are none, or old ones.
log=build/setup.log
mkdir -p build
echo "Installing ${missing[*]}" >&2
if ! { "${as_root[@]}" DEBIAN_FRONTEND=noninteractive dpkg --configure -a &&
    { install || { apt update && install; }; }; } </dev/null >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    fail "The packages could not be installed; the log is $log"
fi
