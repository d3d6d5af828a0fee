#!/usr/bin/env bash
# SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
# Sets up a Debian 12 machine for the project and builds it.
#   tools/dev.sh test     install what is missing, build, run every test
#   tools/dev.sh studio [FILE] [--screenshot OUT.png]
#                         install what is missing, build the studio, start it (on the demo ply without FILE)
#   tools/dev.sh build    install what is missing and build
# BUILD_DIR (default: build) and BUILD_TYPE (default: Release) may be set in the environment.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${BUILD_DIR:-$here/build}
type=${BUILD_TYPE:-Release}
# Paths inside the checkout hash relatively, so every checkout and build folder shares the cache.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$here}

packages=(
    build-essential cmake ninja-build ccache pkg-config
    qt6-base-dev qt6-base-dev-tools libqt6opengl6-dev qt6-svg-dev qt6-l10n-tools libgl-dev
    libeigen3-dev libsimdjson-dev
    xvfb xauth
)

install_missing() {
    local missing=()
    for p in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${sudo[@]}" apt-get update -qq
    "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Builds the given targets, or everything without one.
build_targets() {
    cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="$type" >/dev/null
    cmake --build "$build" -j "$(nproc)" ${1:+--target "$@"}
}

case "${1:-}" in
    test)
        install_missing
        build_targets
        ctest --test-dir "$build" --output-on-failure -j "$(nproc)"
        ;;
    studio)
        # The studio target brings the module and the graphics bridge it loads at run time;
        # the remaining arguments go to the studio (a program file, --screenshot OUT.png, ...).
        install_missing
        build_targets zylstudio
        shift
        exec "$build/bin/zylstudio" "$@"
        ;;
    build)
        install_missing
        build_targets
        ;;
    *)
        sed -n '3,8p' "$0" | sed 's/^# \{0,1\}//'
        exit 2
        ;;
esac
