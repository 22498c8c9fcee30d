# stackreel_precompile(<target> <set>): precompiled headers for a target. Reading headers is most of what compiling a
# source of this project costs, so the headers of a set, cmake/precompiled/<set>.h, are compiled once for all targets
# that use the set.
#
# Each source still includes what it uses. `./test lint` reads the product's sources without precompiled headers and so
# finds what is missing; CMAKE_DISABLE_PRECOMPILE_HEADERS switches them off for a build.
#
# GCC ignores precompiled headers, with a warning, when an option or a macro differs from those they were compiled with.
# So a set links only the Qt modules that all of its targets link.
function(stackreel_precompile target set)
  target_precompile_headers(${target} REUSE_FROM stackreel_precompiled_${set})
endfunction()

# stackreel_precompiled_set(<set> <library>…): defines a set, with the libraries that its headers belong to.
function(stackreel_precompiled_set set)
  set(target stackreel_precompiled_${set})
  add_library(${target} STATIC ${CMAKE_SOURCE_DIR}/cmake/precompiled/empty.cpp)
  set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  if(set MATCHES test)
    stackreel_test_options(${target})
  else()
    stackreel_target(${target})
  endif()
  target_link_libraries(${target} PRIVATE ${ARGN})
  # Without the path of the source folder, so that compiler caches recognise the set in another folder.
  target_precompile_headers(${target} PRIVATE <cmake/precompiled/${set}.h>)
endfunction()

stackreel_precompiled_set(std)
stackreel_precompiled_set(core Qt6::Core QCoro6::Core)
if(TARGET Qt6::Widgets)
  stackreel_precompiled_set(widgets Qt6::Widgets QCoro6::Core)
  stackreel_precompiled_set(quick Qt6::Quick QCoro6::Core)
endif()
