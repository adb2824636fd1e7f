# shellcheck shell=bash
# Shared by the scripts, which source it. Sets project_root.

project_root="$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.." && pwd -P)"

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

listed_packages() {
    sed -e 's/[[:space:]]*#.*//' -e '/^[[:space:]]*$/d' -- "$@"
}

# Prints the packages of the given lists that are not installed.
missing_packages() {
    local package status
    listed_packages "$@" | while read -r package; do
        status="$(dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null || true)"
        grep -qx installed <<<"$status" || printf '%s\n' "$package"
    done
}

is_root() {
    [ "$(id -u)" -eq 0 ]
}

# Asks for a password only if there is a terminal.
can_become_root() {
    is_root && return 0
    command -v sudo >/dev/null || return 1
    sudo -n true 2>/dev/null && return 0
    [ -t 0 ] && sudo -v
}

apt_get() {
    local command=(env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
        apt-get -q -y -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 "$@")
    is_root || command=(sudo -- "${command[@]}")
    "${command[@]}" </dev/null
}

# Installs the missing Debian packages of the given lists.
install_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        fail "Morlaine is built from Debian packages, and this system has no apt to install them with." \
            "It needs what Debian calls:" \
            "$(listed_packages "$@" | sed 's/^/  /')"
    fi

    local missing
    missing="$(missing_packages "$@" | tr '\n' ' ')"
    missing="${missing% }"
    [ -n "$missing" ] || return 0

    if ! can_become_root; then
        fail "These packages are missing, and installing them takes root or sudo, which are not available here:" \
            "  $missing" \
            "An administrator installs them with:" \
            "  apt-get update && apt-get install --no-install-recommends $missing"
    fi

    echo "Installing: $missing"
    apt_get update || echo "The package lists could not all be refreshed; trying with the present ones." >&2
    # shellcheck disable=SC2086 # one word a package
    apt_get install --no-install-recommends --assume-no $missing 2>/dev/null | grep -E '^(Need to get|After this)' || true
    # shellcheck disable=SC2086 # one word a package
    apt_get install --no-install-recommends $missing || fail "The packages could not be installed; see above."
}

configure() {
    local folder="$project_root/build/$1" command=(cmake --preset "$1" --log-level=NOTICE)
    if [ -e "$folder" ] && ! [ -w "$folder" ]; then
        fail "$folder belongs to $(stat -c %U -- "$folder") and cannot be written to. Remove it and try again."
    fi
    # The cache of a checkout that was moved or copied still contains the old path.
    local cache="$folder/CMakeCache.txt"
    if [ -e "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$project_root" "$cache"; then
        command+=(--fresh)
    fi
    # Another compiler than the one of the checks may warn of more; that must break nobody's build.
    local compiler_of_checks=12
    if [ "$(c++ -dumpversion | cut -d . -f 1)" -ne "$compiler_of_checks" ]; then
        command+=(-D CMAKE_COMPILE_WARNING_AS_ERROR=OFF)
    fi
    (cd -- "$project_root" && "${command[@]}" >/dev/null)
}

# build PRESET [TARGET...]: configures the preset and builds the targets, or everything.
build() {
    local preset="$1"
    shift
    configure "$preset"
    (cd -- "$project_root" && cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"})
}
