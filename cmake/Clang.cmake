# Toolchain of the preset `fuzz`: the first clang that is installed, in the order of scripts/packages.sh. libFuzzer comes
# with clang only, and each release of Debian has other versions.
find_program(STACKREEL_CLANG NAMES clang++-16 clang++-19 clang++-21 clang++-22 clang++-23 clang++ REQUIRED)
set(CMAKE_CXX_COMPILER ${STACKREEL_CLANG})
