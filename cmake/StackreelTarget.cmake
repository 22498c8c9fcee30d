# stackreel_target(<target>): standard, warnings, sanitizers and defines of every target of this project.
function(stackreel_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR})
  # GCC 12 sees overlapping copies in plain string concatenation when it optimises (GCC bug 105329).
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wconversion -Wsign-conversion -Wshadow -Werror $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  target_compile_definitions(${target} PRIVATE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING
    STACKREEL_VERSION="${PROJECT_VERSION}")
  if(STACKREEL_SANITIZE)
    # The vptr check makes a pipe each time it meets a type it has not cached, and ends the program when no descriptor
    # is left, which some tests bring about.
    if(STACKREEL_SANITIZE MATCHES undefined)
      set(no_vptr -fno-sanitize=vptr)
    endif()
    # With its sanitizers, GCC warns falsely of uninitialised variables.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
      -fsanitize=${STACKREEL_SANITIZE} ${no_vptr} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${STACKREEL_SANITIZE})
  endif()
endfunction()
