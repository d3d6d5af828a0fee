#!/usr/bin/env bash
# SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
# Sets up a Debian 12 machine for the project and builds it.
#   tools/dev.sh test     install what is missing, build, run every test
#   tools/dev.sh studio [FILE] [--screenshot OUT.png]
#                         install what is missing, build the studio, start it (on the demo ply without FILE)
#   tools/dev.sh build    install what is missing and build
#   tools/dev.sh coverage install what is missing, build with coverage in build-coverage, run
#                         every test, print line coverage per library folder
# BUILD_DIR (default: build) and BUILD_TYPE (default: Release) may be set in the environment.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${BUILD_DIR:-$here/build}
type=${BUILD_TYPE:-Release}
# Paths inside the checkout hash relatively, so every checkout and build folder shares the cache.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$here}

packages=(
    build-essential cmake ninja-build ccache pkg-config
    qt6-base-dev qt6-base-dev-tools libqt6opengl6-dev qt6-svg-dev qt6-l10n-tools qt6-tools-dev libgl-dev
    libeigen3-dev libsimdjson-dev
    xvfb xauth
)
# Only the coverage report needs it.
[ "${1:-}" = coverage ] && packages+=(gcovr)

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

# Prints covered / total lines per library folder (host/<lib>, app/<lib>, tools/<tool>, and the
# module's folders), then the sum, from gcovr's per-file summary on standard input.
coverage_table() {
    python3 -c '
import json, sys
rows = {}
for f in json.load(sys.stdin)["files"]:
    parts = f["filename"].split("/")
    key = "/".join(parts[:2]) if parts[0] in ("host", "app", "tools") and len(parts) > 2 else parts[0]
    covered, total = rows.get(key, (0, 0))
    rows[key] = (covered + f["line_covered"], total + f["line_total"])
rows["TOTAL"] = tuple(map(sum, zip(*rows.values())))
print("%-24s %7s %8s %7s" % ("folder", "lines", "covered", "cover"))
for key, (covered, total) in sorted(rows.items(), key=lambda kv: (kv[0] == "TOTAL", kv[0])):
    print("%-24s %7d %8d %6.1f%%" % (key, total, covered, 100.0 * covered / max(total, 1)))
'
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
    coverage)
        # A debug build of its own with gcc's line counters; the counters start from zero so
        # that the table reflects one full test run.
        install_missing
        build=${COVERAGE_DIR:-$here/build-coverage}
        cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
            -DCMAKE_CXX_FLAGS="--coverage -O0" -DCMAKE_EXE_LINKER_FLAGS=--coverage \
            -DCMAKE_SHARED_LINKER_FLAGS=--coverage >/dev/null
        cmake --build "$build" -j "$(nproc)"
        find "$build" -name '*.gcda' -delete
        ctest --test-dir "$build" -j "$(nproc)" | tail -n 3 || echo "(some tests failed; the table counts the lines they reached)"
        gcovr --root "$here" --object-directory "$build" \
            --filter "$here/(host|app|tools|module|graphics|course|layingpoints|links|inspection)/" \
            --exclude '.*_autogen/.*' --exclude-directories '.*/CMakeFiles/[0-9.]+' \
            --json-summary - | coverage_table
        ;;
    *)
        sed -n '3,8p' "$0" | sed 's/^# \{0,1\}//'
        exit 2
        ;;
esac
