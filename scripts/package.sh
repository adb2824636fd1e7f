#!/usr/bin/env bash
# Installs missing packages, makes the Debian package of Morlaine and checks it. Prints the path of the package.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/common.sh"

packaging="$project_root/packaging"
install_packages "$project_root/scripts/debian-packages.txt" "$packaging/debian-packages.txt"

desktop-file-validate "$packaging/com.morlaine.Morlaine.desktop"
appstreamcli validate --no-net "$packaging/com.morlaine.Morlaine.metainfo.xml"

build release
folder="$project_root/build/release/package"
rm -rf -- "$folder"
(cd -- "$project_root/build/release" && cpack)
package="$(echo "$folder"/morlaine_*.deb)"
# The package is not part of a distribution and closes no bug.
lintian --allow-root --fail-on error --suppress-tags initial-upload-closes-no-bugs "$package"
echo "$package"
