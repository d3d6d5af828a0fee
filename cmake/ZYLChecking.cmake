# SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
# Checking builds, off in the normal build and in CI (tools/dev.sh sanitize and fuzz turn
# them on in a build folder of their own).
#   ZYL_SANITIZE  every target with AddressSanitizer and UndefinedBehaviorSanitizer, stopping
#                 at the first report
#   ZYL_FUZZ      the same, with the libFuzzer targets under fuzz/ (clang only); every target
#                 is instrumented for coverage, so that the fuzzers see how far they reach
option(ZYL_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(ZYL_FUZZ "Build the libFuzzer targets under fuzz/ (needs clang; implies ZYL_SANITIZE)" OFF)

if(ZYL_FUZZ AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "ZYL_FUZZ needs clang (libFuzzer): configure with -DCMAKE_CXX_COMPILER=clang++")
endif()
if(ZYL_SANITIZE OR ZYL_FUZZ)
    # Frames kept and line tables for readable reports; -O1 keeps the run fast enough for
    # the whole suite.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g1 -O1)
    add_link_options(-fsanitize=address,undefined)
endif()
if(ZYL_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
