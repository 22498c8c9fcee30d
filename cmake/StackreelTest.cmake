# stackreel_test(<name> SOURCES … [LIBS …] [TIMEOUT seconds] [SERIAL] [QUICK] [ENVIRONMENT change]): one GoogleTest program,
# each of its tests known to ctest; a change of the environment is written as ctest does (VARIABLE=operation:value).
# The programs are built in build/…/tests, beside lib/stackreel, so that they find the same resources as the product.
find_package(GTest REQUIRED)
include(GoogleTest)

# What needs no display, no clip and no child that waits (QUICK): ctest -L quick.
add_custom_target(quick_tests)

function(stackreel_test name)
  cmake_parse_arguments(arg "SERIAL;QUICK" "TIMEOUT;ENVIRONMENT" "SOURCES;LIBS" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  stackreel_target(${name})
  # The tested libraries are fully optimised. The tests need not be, and when GCC 12 inlines them, it warns falsely of
  # uninitialised optional values.
  target_compile_options(${name} PRIVATE
    $<$<CONFIG:Release>:-O1> $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>>:-Wno-maybe-uninitialized>)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${arg_LIBS} GTest::gtest)
  set(properties TIMEOUT ${arg_TIMEOUT})
  if(arg_SERIAL)
    list(APPEND properties RUN_SERIAL ON)
  endif()
  if(arg_QUICK)
    list(APPEND properties LABELS quick)
    add_dependencies(quick_tests ${name})
  endif()
  if(arg_ENVIRONMENT)
    list(APPEND properties ENVIRONMENT_MODIFICATION ${arg_ENVIRONMENT})
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
