#!/usr/bin/env bash
# Installs missing packages, builds everything and runs all tests; needs no display.
# Arguments go to ctest: scripts/test.sh -R Scanner
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/common.sh"

echo "Morlaine is built and all its tests are run. The first time, packages are installed and all sources compiled."
install_packages "$project_root/scripts/debian-packages.txt" "$project_root/scripts/debian-packages-tests.txt"
build release

cd -- "$project_root"
exec ctest --preset release --parallel "$(nproc)" "$@"
