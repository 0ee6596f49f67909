# GoogleTest is built from the sources of the package googletest, so that the Windows tests need no foreign
# library. It takes no sanitizers, and is optimised where that is quicker over all: for Windows a little.
# The linker there takes a time that grows with the square of the number of functions, so that a test program
# links in a third of the time when there are fewer.
set(KRV_GOOGLETEST_DIR "/usr/src/googletest" CACHE PATH "Sources of GoogleTest")
if(NOT EXISTS "${KRV_GOOGLETEST_DIR}/CMakeLists.txt")
  message(FATAL_ERROR "GoogleTest's sources are missing: install the package googletest.")
endif()
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory("${KRV_GOOGLETEST_DIR}" "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
if(WIN32)
  set(KRV_TEST_OPTIONS -O1)
else()
  set(KRV_TEST_OPTIONS -O0)
endif()
target_compile_options(gtest PRIVATE ${KRV_TEST_OPTIONS} -g0)
if(KRV_SANITIZE)
  target_compile_options(gtest PRIVATE -fno-sanitize=all)
endif()

# The tests are optimised in the same way.
krv_precompile(krv_test_headers HEADERS <gtest/gtest.h> ${KRV_COMMON_HEADERS}
  LIBRARIES gtest krv_flags krv_asio OPTIONS ${KRV_TEST_OPTIONS})
if(WIN32)
  krv_precompile(krv_windows_test_headers HEADERS <gtest/gtest.h> ${KRV_COMMON_HEADERS} ${KRV_WINDOWS_HEADERS}
    LIBRARIES gtest krv_flags krv_asio krv_windows_base OPTIONS ${KRV_TEST_OPTIONS})
endif()

# krv_add_test(NAME [HEADERS precompiled] SOURCES... LIBRARIES...): one GoogleTest program, which is one test of CTest. The
# cases are counted from the report it leaves in test-results; a process for each case would start
# Wine hundreds of times.
function(krv_add_test name)
  cmake_parse_arguments(ARG "" "HEADERS" "SOURCES;LIBRARIES" ${ARGN})
  if(NOT ARG_HEADERS)
    set(ARG_HEADERS krv_test_headers)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_compile_options(${name} PRIVATE ${KRV_TEST_OPTIONS})
  # The linker for Windows takes a time that grows with the square of what one file has.
  set_target_properties(${name} PROPERTIES UNITY_BUILD_BATCH_SIZE 8)
  krv_use_precompiled(${name} ${ARG_HEADERS})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} gtest_main krv_flags krv_asio)
  # The report's path is relative, since a Windows program doesn't take the build machine's paths.
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 --gtest_output=xml:test-results/${name}.xml
    WORKING_DIRECTORY "${CMAKE_BINARY_DIR}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 1200)
endfunction()
