#!/usr/bin/env bash
# Makes the Debian package and looks at what it brings.
#   tools/package.sh       the package lies in build/release afterwards
# Packages that are missing are installed on the way, as root or by sudo.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/.."
. tools/setup.sh
package_packages=(appstream desktop-file-utils dpkg-dev librsvg2-bin lintian mandoc)
umask 022
require_packages "${build_packages[@]}" "${run_packages[@]}" "${package_packages[@]}"

cmake --preset release -DMORVENLY_TESTS=OFF -DCMAKE_INSTALL_PREFIX=/usr
build release
rm -f build/release/morvenly_*.deb
(cd build/release && cpack >cpack.log) || { cat build/release/cpack.log; exit 1; }

desktop-file-validate build/release/packaging/org.morvenly.Morvenly.desktop
appstreamcli validate --no-net build/release/packaging/org.morvenly.Morvenly.metainfo.xml
for page in packaging/*.1; do mandoc -T lint -W warning "$page"; done
lintian --fail-on error build/release/morvenly_*.deb
ls build/release/morvenly_*.deb
