# The target `headers` compiles each header alone, so that none leans on what its includers have included
# before it. Native builds have the portable headers and those in folders named `posix`, builds for
# Windows those in folders named `windows`. The large headers of the standard library and of the system
# are read once for all; that a header includes those of the standard library that it needs is what
# tools/check-layers looks at. It isn't a part of `all`.
set(headers)
foreach(folder IN ITEMS src suite simulator bench tests fuzz)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
    "${PROJECT_SOURCE_DIR}/${folder}/*.h")
  list(APPEND headers ${found})
endforeach()
if(WIN32)
  list(FILTER headers INCLUDE REGEX "/windows/")
else()
  list(FILTER headers EXCLUDE REGEX "/windows/")
endif()

set(units)
foreach(header IN LISTS headers)
  set(unit "${CMAKE_CURRENT_BINARY_DIR}/headers/${header}.cpp")
  file(CONFIGURE OUTPUT "${unit}" CONTENT "#include \"${header}\"\n")
  list(APPEND units "${unit}")
endforeach()
add_library(headers OBJECT EXCLUDE_FROM_ALL ${units})
# The compiler alone is faster than asking ccache, which reads the whole precompiled file each time.
set_target_properties(headers PROPERTIES UNITY_BUILD OFF CXX_COMPILER_LAUNCHER "")
set(precompiled ${KRV_COMMON_HEADERS} <iostream> <unordered_map>)
if(WIN32)
  list(APPEND precompiled ${KRV_WINDOWS_HEADERS})
endif()
target_precompile_headers(headers PRIVATE ${precompiled})
target_compile_options(headers PRIVATE -O0 -g0)
if(KRV_SANITIZE)
  target_compile_options(headers PRIVATE -fno-sanitize=all)
endif()
target_link_libraries(headers PRIVATE krv_cli krv_control krv_image krv_about krv_simulator krv_bench_book
  krv_bench_document krv_bench_session krv_test_support krv_header_only gtest)
if(WIN32)
  target_link_libraries(headers PRIVATE krv_windows_control krv_suite_com krv_bench_book_windows
    krv_bench_document_windows krv_bench_session_windows)
endif()
