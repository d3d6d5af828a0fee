#!/usr/bin/env bash
# SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
# Sets up a Debian 12 machine for the project and builds it.
#   tools/dev.sh test     install what is missing, build, run every test
#   tools/dev.sh studio [FILE] [--screenshot OUT.png]
#                         install what is missing, build the studio, start it (on the demo ply without FILE)
#   tools/dev.sh build    install what is missing and build
#   tools/dev.sh sanitize build with AddressSanitizer and UndefinedBehaviorSanitizer (in
#                         build-sanitize) and run every test, failing on the first report
#   tools/dev.sh fuzz [SECONDS] [file|scene]
#                         build the fuzzers with clang (in build-fuzz) and run them (default
#                         60 s, shared 3:1 by the file reader and the scene)
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
    cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="$type" "${configure[@]}" >/dev/null
    cmake --build "$build" -j "$(nproc)" ${1:+--target "$@"}
}
configure=()

# The sanitized build takes the usual compiler; the fuzzers need clang's libFuzzer and build
# only what they reach. The first report fails a run; leaks count. Debug line tables make
# ccache hash the build folder unless told not to, which would keep checkouts from sharing.
use_checking_build() {
    export ASAN_OPTIONS=halt_on_error=1:abort_on_error=1:detect_leaks=1
    export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
    export CCACHE_NOHASHDIR=1
    case "$1" in
        sanitize)
            build=$here/build-sanitize
            configure=(-DZYL_SANITIZE=ON)
            ;;
        fuzz)
            packages+=(clang libclang-rt-dev llvm)
            build=$here/build-fuzz
            configure=(-DCMAKE_CXX_COMPILER=clang++ -DZYL_FUZZ=ON)
            ;;
    esac
}

# Runs fuzzer $1 for $2 seconds on its corpus (seeds from fuzz/corpus, what it learns kept
# in the build folder) with the format's dictionary; a crash, hang or leak stops it with
# the input saved in build-fuzz/fuzz/findings.
run_fuzzer() {
    local corpus=$build/fuzz/corpus-$1 findings=$build/fuzz/findings
    mkdir -p "$corpus" "$findings"
    "$build/bin/fuzz_program_$1" "$corpus" "$here/fuzz/corpus" -dict="$here/fuzz/program.dict" \
        -max_total_time="$2" -timeout=30 -rss_limit_mb=2048 -max_len=8192 -print_final_stats=1 \
        -artifact_prefix="$findings/$1-"
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
    sanitize)
        use_checking_build sanitize
        install_missing
        build_targets
        ctest --test-dir "$build" --output-on-failure -j "$(nproc)" -LE gl
        # D-Bus and Mesa's software driver (unloaded by then, so its frames have no name to
        # suppress) leave allocations at exit under Xvfb: the OpenGL tests skip the leak check.
        ASAN_OPTIONS=$ASAN_OPTIONS:detect_leaks=0 ctest --test-dir "$build" --output-on-failure -j "$(nproc)" -L gl
        ;;
    fuzz)
        seconds=${2:-60}
        use_checking_build fuzz
        install_missing
        case "${3:-}" in
            file | scene)
                build_targets "fuzz_program_$3"
                run_fuzzer "$3" "$seconds"
                ;;
            '')
                build_targets fuzz_program_file fuzz_program_scene
                run_fuzzer file $((seconds * 3 / 4))
                run_fuzzer scene $((seconds - seconds * 3 / 4))
                ;;
            *)
                echo "Unknown fuzzer: $3 (file or scene)" >&2
                exit 2
                ;;
        esac
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
        sed -n '3,14p' "$0" | sed 's/^# \{0,1\}//'
        exit 2
        ;;
esac
