# The metainfo of a build: with screenshots if they have an address on the web. A test also runs this file as a script.
cmake_policy(VERSION 3.25)

# Replaces the placeholder for the address of the screenshots. Without an address, leaves the screenshots out: software
# centres can only show pictures from the web.
function(stackreel_write_metainfo source output address)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${source}")
  file(READ "${source}" text)
  if(address STREQUAL "")
    string(REGEX REPLACE " *<screenshots>.*</screenshots>\n" "" text "${text}")
  elseif(address MATCHES "^https://[^/]")
    string(REPLACE "https://stackreel.invalid/screenshots" "${address}" text "${text}")
  else()
    message(FATAL_ERROR "STACKREEL_SCREENSHOTS is not an https address: ${address}")
  endif()
  file(CONFIGURE OUTPUT "${output}" CONTENT "${text}" @ONLY)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  stackreel_write_metainfo("${SOURCE}" "${OUTPUT}" "${ADDRESS}")
endif()
