// CMake compiles precompiled headers only for targets that have a source.
