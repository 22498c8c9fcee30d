# The information dictionary of a build: its id and version, and where it finds updates. Also used by a test, as a script.
cmake_policy(VERSION 3.25)

# Refuses settings with which no update could be found or trusted. Without a feed and a key there are no updates.
function(stackreel_check_update_settings feed key)
  if(key STREQUAL "" OR key STREQUAL "REPLACE_BEFORE_RELEASE")
    if(NOT feed STREQUAL "")
      message(FATAL_ERROR "STACKREEL_UPDATE_FEED is given without STACKREEL_UPDATE_KEY")
    endif()
    return()
  endif()
  # 32 bytes in base64: the last of 43 characters holds four bits, and one character fills up.
  string(LENGTH "${key}" length)
  if(NOT length EQUAL 44 OR NOT key MATCHES "^[A-Za-z0-9+/]+[AEIMQUYcgkosw048]=$")
    message(FATAL_ERROR "STACKREEL_UPDATE_KEY is not the base64 of 32 bytes: ${key}")
  endif()
  if(NOT feed MATCHES "^https://[A-Za-z0-9.-]+(:[0-9]+)?(/[-A-Za-z0-9._~!$&'()*+,=:@%/?]*)?$")
    message(FATAL_ERROR "STACKREEL_UPDATE_FEED is not an https address: ${feed}")
  endif()
endfunction()

# Writes it as JSON, for the resource directory, and as a property list, for a bundle on macOS.
function(stackreel_write_info application_id version feed key json plist)
  stackreel_check_update_settings("${feed}" "${key}")
  set(CFBundleIdentifier "${application_id}")
  set(CFBundleShortVersionString "${version}")
  set(SUFeedURL "${feed}")
  set(SUPublicEDKey "${key}")
  set(info "{}")
  foreach(name IN ITEMS CFBundleIdentifier CFBundleShortVersionString SUFeedURL SUPublicEDKey)
    # None of the characters that have passed is written differently in JSON.
    string(JSON info SET "${info}" ${name} "\"${${name}}\"")
  endforeach()
  file(CONFIGURE OUTPUT "${json}" CONTENT "@info@\n" @ONLY)
  string(REPLACE "&" "&amp;" SUFeedURL "${feed}")
  configure_file("${CMAKE_CURRENT_FUNCTION_LIST_DIR}/macos/Info.plist.in" "${plist}" @ONLY)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  stackreel_write_info(some.id 1.2.3 "${FEED}" "${KEY}" "${JSON}" "${PLIST}")
endif()
