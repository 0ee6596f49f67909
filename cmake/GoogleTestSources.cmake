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

# krv_add_test(NAME SOURCES... LIBRARIES...): one GoogleTest program, which is one test of CTest. The
# cases are counted from the report it leaves in test-results; a process for each case would start
# Wine hundreds of times.
function(krv_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} gtest_main krv_warnings)
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/src")
  # The report's path is relative, since a Windows program doesn't take the build machine's paths.
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 --gtest_output=xml:test-results/${name}.xml
    WORKING_DIRECTORY "${CMAKE_BINARY_DIR}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()
