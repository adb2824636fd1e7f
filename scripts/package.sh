#!/usr/bin/env bash
# Makes the Debian package of Morlaine and checks it, after installing what that takes. Prints the package's path.
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
# Not part of a distribution, so that it closes no bug of one.
lintian --allow-root --fail-on error --suppress-tags initial-upload-closes-no-bugs "$package"
echo "$package"
