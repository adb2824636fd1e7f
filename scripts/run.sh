#!/usr/bin/env bash
# Builds Morlaine, after installing what that takes, and opens its window.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/common.sh"

install_packages "$project_root/scripts/debian-packages.txt"
build release morlaine

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    fail "Morlaine is built, but there is no display here to open its window on." \
        "Run this again from a desktop session (neither DISPLAY nor WAYLAND_DISPLAY is set)."
fi
exec "$project_root/build/release/morlaine"
