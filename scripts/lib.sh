# shellcheck shell=bash
# The scripts of this folder source this file. It changes to the top folder of the tree.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

die()
{
    echo "${0##*/}: $*" >&2
    exit 1
}

# packages GROUP...: prints the names that scripts/packages lists for these groups.
packages()
{
    local group
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' scripts/packages
    done | sort -u
}

is_installed()
{
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# install_packages GROUP...: installs what is missing; uses neither apt nor the network if nothing is missing.
install_packages()
{
    local package missing=() as_root=()
    if ! command -v dpkg-query >/dev/null; then
        echo "This system does not use Debian packages. Please install these, here under their Debian names:" >&2
        packages "$@" >&2
        return
    fi
    for package in $(packages "$@"); do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || die "please install as root: ${missing[*]}"
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

# build PRESET [OPTION...]: configures and builds; the options are passed to cmake --build.
build()
{
    local preset=$1
    shift
    cmake --preset "$preset"
    cmake --build --preset "$preset" "$@"
}
