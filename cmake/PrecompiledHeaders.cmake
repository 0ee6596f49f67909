# Headers that are read once for many files, in the presets that compile files together; elsewhere each
# file shows that it includes what it uses.

# krv_precompile(NAME HEADERS... LIBRARIES... OPTIONS...): NAME stands for these headers in
# krv_use_precompiled. The libraries give the definitions that the headers are read with; they and the
# options have to be those of the targets that use them.
function(krv_precompile name)
  cmake_parse_arguments(ARG "" "" "HEADERS;LIBRARIES;OPTIONS" ${ARGN})
  if(CMAKE_UNITY_BUILD)
    file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/${name}.cpp" CONTENT "")
    add_library(${name} OBJECT "${CMAKE_BINARY_DIR}/${name}.cpp")
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
    target_compile_options(${name} PRIVATE ${ARG_OPTIONS})
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
  endif()
endfunction()

# krv_use_precompiled(TARGET NAME)
function(krv_use_precompiled target name)
  if(CMAKE_UNITY_BUILD)
    target_precompile_headers(${target} REUSE_FROM ${name})
  endif()
endfunction()

set(KRV_COMMON_HEADERS <algorithm> <array> <atomic> <chrono> <cstdint> <deque> <filesystem> <fstream>
  <functional> <limits> <map> <memory> <mutex> <optional> <set> <span> <sstream> <string> <string_view>
  <thread> <utility> <variant> <vector>)
set(KRV_WINDOWS_HEADERS <windows.h> <commctrl.h> <oleauto.h> <ocidl.h> <olectl.h> <comdef.h> <wrl/client.h>)
