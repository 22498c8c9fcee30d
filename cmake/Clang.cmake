# The toolchain of the preset `fuzz`: the first installed clang, in the order of scripts/packages.sh. Only clang has
# libFuzzer, and each release of Debian has other versions of clang.
find_program(STACKREEL_CLANG NAMES clang++-16 clang++-19 clang++-21 clang++-22 clang++-23 clang++ REQUIRED)
set(CMAKE_CXX_COMPILER ${STACKREEL_CLANG})
