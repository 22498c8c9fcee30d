include(CheckPIESupported)
check_pie_supported()

# stackreel_harden(<target>): in a release build, checks of buffers and of the stack at run time, and addresses that are
# random and, once resolved, read-only. The Debian package adds the compiler and linker flags of dpkg-buildflags. They come
# first, so the level of _FORTIFY_SOURCE is always the one below.
function(stackreel_harden target)
  if(STACKREEL_SANITIZE)
    return()
  endif()
  # Some compilers define the macro themselves, and warn about another definition.
  target_compile_options(${target} PRIVATE
    "$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3;-fstack-protector-strong>")
  target_link_options(${target} PRIVATE "$<$<CONFIG:Release>:LINKER:-z,relro,-z,now,-z,noexecstack>")
endfunction()

# stackreel_target(<target> [FOR_TESTS]): sets the C++ standard, warnings, sanitizers and defines, for every target of this
# project, and hardens all but those of the tests.
function(stackreel_target target)
  if(NOT FOR_TESTS IN_LIST ARGN)
    stackreel_harden(${target})
  endif()
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
  # Precompiled headers need the same options in all targets. Without this line the options differ: GStreamer adds
  # -pthread and Qt before 6.8 adds -fPIC to the targets that use them, and CMake adds -fPIE to programs.
  target_compile_options(${target} PRIVATE -pthread -fPIC)
  # With optimisation, GCC 12 warns falsely about overlapping copies in string concatenation (GCC bug 105329), and with
  # precompiled headers also about copies out of bounds.
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wconversion -Wsign-conversion -Wshadow
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-array-bounds;-Wno-stringop-overflow>)
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING)
  if(STACKREEL_SANITIZE)
    # The vptr check opens a pipe for each type that is not in its cache, and aborts when no descriptor is left. Some
    # tests use up all descriptors on purpose.
    if(STACKREEL_SANITIZE MATCHES undefined)
      set(no_vptr -fno-sanitize=vptr)
    endif()
    # With sanitizers, GCC warns falsely about uninitialised variables.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
      -fsanitize=${STACKREEL_SANITIZE} ${no_vptr} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${STACKREEL_SANITIZE})
  endif()
endfunction()
