#!/usr/bin/env bash
# Installs the Debian packages that are missing to build libDBService, or tells which ones are.
# Usage: setup.sh [--test]    with what only the tests need
set -euo pipefail

packages=(g++ cmake ninja-build pkg-config libmariadb-dev libsqlite3-dev libspdlog-dev libfmt-dev
    libcli11-dev nlohmann-json3-dev uuid-dev)
if [[ "${1:-}" == --test ]]; then
    # The server's core package brings the program alone: no service is set up or started.
    packages+=(libgtest-dev libgmock-dev mariadb-server-core mariadb-client-core clang-format
        clang-tidy binutils)
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ "$status" == installed ]] || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ $EUID -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "Please install: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
echo "Installing ${missing[*]}" >&2
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
