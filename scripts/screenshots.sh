#!/usr/bin/env bash
# Makes the screenshots in docs/screenshots: light and dark, at pixel ratios 1 and 2.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/common.sh"

install_packages "$project_root/scripts/debian-packages.txt" "$project_root/scripts/debian-packages-tests.txt"
build release morlaine morlaine_large_disk
/usr/bin/python3 -B "$project_root/scripts/screenshots/take_screenshots.py" \
    "$project_root/build/release/morlaine" "$project_root/docs/screenshots"
