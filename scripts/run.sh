#!/usr/bin/env bash
# Installs missing packages, builds Morlaine and opens its window.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/common.sh"

if ! "$project_root/scripts/display-answers"; then
    fail "There is no display here to open Morlaine's window on: nothing answers at" \
        "DISPLAY=${DISPLAY:-} and WAYLAND_DISPLAY=${WAYLAND_DISPLAY:-}. Run this again from a desktop session."
fi
echo "Morlaine is built and its window opened. The first time, packages are installed and all sources compiled."
install_packages "$project_root/scripts/debian-packages.txt"
build release morlaine
exec "$project_root/build/release/morlaine"
