# stackreel_precompile(<target> <set>): uses precompiled headers for a target. Most of the time to compile a source of
# this project is spent on headers, so the headers of a set, cmake/precompiled/<set>.h, are compiled once for all
# targets that use the set.
#
# Each source still includes what it uses. `./test lint` checks the product's sources without precompiled headers, so it
# finds missing includes. CMAKE_DISABLE_PRECOMPILE_HEADERS disables precompiled headers for a build.
#
# If an option or a macro differs from those at the compilation of the headers, GCC ignores them with a warning.
# Therefore a set links only the Qt modules that all of its targets link.
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
  # The path is relative, so that compiler caches recognise the set in another checkout.
  target_precompile_headers(${target} PRIVATE <cmake/precompiled/${set}.h>)
endfunction()

stackreel_precompiled_set(std)
stackreel_precompiled_set(core Qt6::Core QCoro6::Core)
if(TARGET Qt6::Widgets)
  stackreel_precompiled_set(widgets Qt6::Widgets QCoro6::Core)
  stackreel_precompiled_set(quick Qt6::Quick QCoro6::Core)
endif()
