# The information dictionary of a build: its id, its version and its update feed. A test also runs this file as a script.
cmake_policy(VERSION 3.25)

# Fails if the settings are such that no update could be found or verified. With neither a feed nor a key, updates are
# disabled.
function(stackreel_check_update_settings feed key)
  if(key STREQUAL "" OR key STREQUAL "REPLACE_BEFORE_RELEASE")
    if(NOT feed STREQUAL "")
      message(FATAL_ERROR "STACKREEL_UPDATE_FEED is given without STACKREEL_UPDATE_KEY")
    endif()
    return()
  endif()
  # 32 bytes in base64: 43 characters, of which the last holds four bits, and one padding character.
  string(LENGTH "${key}" length)
  if(NOT length EQUAL 44 OR NOT key MATCHES "^[A-Za-z0-9+/]+[AEIMQUYcgkosw048]=$")
    message(FATAL_ERROR "STACKREEL_UPDATE_KEY is not the base64 of 32 bytes: ${key}")
  endif()
  if(NOT feed MATCHES "^https://[A-Za-z0-9.-]+(:[0-9]+)?(/[-A-Za-z0-9._~!$&'()*+,=:@%/?]*)?$")
    message(FATAL_ERROR "STACKREEL_UPDATE_FEED is not an https address: ${feed}")
  endif()
endfunction()

# Writes the dictionary as JSON, for the resource directory, and as a property list, for a bundle on macOS.
function(stackreel_write_info application_id version feed key json plist)
  stackreel_check_update_settings("${feed}" "${key}")
  set(CFBundleIdentifier "${application_id}")
  set(CFBundleShortVersionString "${version}")
  set(SUFeedURL "${feed}")
  set(SUPublicEDKey "${key}")
  set(info "{}")
  foreach(name IN ITEMS CFBundleIdentifier CFBundleShortVersionString SUFeedURL SUPublicEDKey)
    # The checks above allow no character that JSON would have to escape.
    string(JSON info SET "${info}" ${name} "\"${${name}}\"")
  endforeach()
  file(CONFIGURE OUTPUT "${json}" CONTENT "@info@\n" @ONLY)
  string(REPLACE "&" "&amp;" SUFeedURL "${feed}")
  configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/macos/Info.plist.in" "${plist}" @ONLY)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  stackreel_write_info(some.id 1.2.3 "${FEED}" "${KEY}" "${JSON}" "${PLIST}")
endif()
