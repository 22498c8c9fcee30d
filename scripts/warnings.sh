# shellcheck shell=bash
# Sourced by other scripts.

# warnings_option: prints the option with which CMake makes warnings errors in CI, and only there: a user's build must not
# stop at a warning. The option is always given, because CMake keeps its last value in the build folder.
warnings_option() { echo "-DCMAKE_COMPILE_WARNING_AS_ERROR=$([ -n "${CI:-}" ] && echo ON || echo OFF)"; }
