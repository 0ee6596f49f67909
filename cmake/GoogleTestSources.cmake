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
include(GoogleTest)

# krv_add_test(NAME SOURCES... LIBRARIES...): one GoogleTest program, its cases found by CTest.
function(krv_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} gtest_main krv_warnings)
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/src")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 300)
endfunction()
