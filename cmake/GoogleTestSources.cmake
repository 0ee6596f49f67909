# GoogleTest is built from the sources of the package googletest, so that the native tests carry the
# same sanitizers as the code and the Windows tests need no foreign library.
set(KRV_GOOGLETEST_DIR "/usr/src/googletest" CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS "${KRV_GOOGLETEST_DIR}/CMakeLists.txt")
  message(FATAL_ERROR "GoogleTest's sources are missing: install the package googletest.")
endif()
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory("${KRV_GOOGLETEST_DIR}" "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)

# Where the libraries' files are compiled together, what every test includes is read once for all of them:
# the tests are many small files with helpers of their own.
if(CMAKE_UNITY_BUILD)
  file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/TestHeaders.cpp" CONTENT "")
  add_library(krv_test_headers OBJECT "${CMAKE_BINARY_DIR}/TestHeaders.cpp")
  target_link_libraries(krv_test_headers PUBLIC gtest krv_flags krv_asio)
  if(WIN32)
    target_link_libraries(krv_test_headers PUBLIC krv_windows_base)
  endif()
  target_precompile_headers(krv_test_headers PRIVATE <gtest/gtest.h> <algorithm> <array> <chrono> <cstdint>
    <filesystem> <functional> <map> <memory> <optional> <span> <sstream> <string> <string_view> <thread>
    <utility> <vector>)
endif()

# krv_add_test(NAME SOURCES... LIBRARIES...): one GoogleTest program, which is one test of CTest. The
# cases are counted from the report it leaves in test-results; a process for each case would start
# Wine hundreds of times.
function(krv_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  if(CMAKE_UNITY_BUILD)
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
    target_precompile_headers(${name} REUSE_FROM krv_test_headers)
  endif()
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} gtest_main krv_flags krv_asio)
  if(WIN32)
    target_link_libraries(${name} PRIVATE krv_windows_base)
  endif()
  # The report's path is relative, since a Windows program doesn't take the build machine's paths.
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 --gtest_output=xml:test-results/${name}.xml
    WORKING_DIRECTORY "${CMAKE_BINARY_DIR}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()
