# stackreel_test(<name> SOURCES … [LIBS …] [TIMEOUT seconds] [SERIAL] [QUICK] [ENVIRONMENT change]): one GoogleTest program,
# each of its tests known to ctest; a change of the environment is written as ctest does (VARIABLE=operation:value).
# The programs are built in build/…/tests, beside lib/stackreel, so that they find the same resources as the product.
find_package(GTest REQUIRED)
include(GoogleTest)

# The test programs marked QUICK, which need no display, no clip and no child process that waits. `ctest -L quick` runs
# them.
add_custom_target(quick_tests)

# stackreel_test_target(<target> <set>): like stackreel_target and stackreel_precompile, for targets of the tests. The
# tested libraries are fully optimised, the tests are not: they need not be fast, and GCC 12 warns falsely about
# uninitialised optional values when it inlines them.
function(stackreel_test_options target)
  stackreel_target(${target} FOR_TESTS)
  target_compile_options(${target} PRIVATE
    $<$<CONFIG:Release>:-O1> $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>>:-Wno-maybe-uninitialized>)
endfunction()

function(stackreel_test_target target set)
  stackreel_test_options(${target})
  stackreel_precompile(${target} ${set})
endfunction()

function(stackreel_test name)
  cmake_parse_arguments(arg "SERIAL;QUICK" "TIMEOUT;ENVIRONMENT" "SOURCES;LIBS" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  set(headers test)
  if(stackreel_test_window IN_LIST arg_LIBS)
    set(headers window_test)
  endif()
  add_executable(${name} ${arg_SOURCES})
  stackreel_test_target(${name} ${headers})
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

stackreel_precompiled_set(test Qt6::Core QCoro6::Core GTest::gtest)
if(STACKREEL_WINDOW)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
  # Qt6::Test is not in the set, because it defines a macro whose value depends on the source folder.
  stackreel_precompiled_set(window_test Qt6::Quick Qt6::Widgets QCoro6::Core GTest::gtest)
endif()
