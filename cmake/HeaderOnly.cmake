# Header-only libraries from the system's packages, usable by the native and the cross compilers.
#
# A cross compiler must never see the system's include folder, so the build tree gets a folder with
# links to just these headers, included as SYSTEM.
set(KRV_HEADER_ONLY_DIR "${CMAKE_BINARY_DIR}/header-only")
file(MAKE_DIRECTORY "${KRV_HEADER_ONLY_DIR}")

function(krv_link_header_only)
  foreach(entry IN LISTS ARGN)
    set(source "/usr/include/${entry}")
    if(NOT EXISTS "${source}")
      message(FATAL_ERROR "The header '${entry}' is missing: install libasio-dev, libcli11-dev, "
        "nlohmann-json3-dev and libkissfft-dev.")
    endif()
    if(NOT EXISTS "${KRV_HEADER_ONLY_DIR}/${entry}")
      file(CREATE_LINK "${source}" "${KRV_HEADER_ONLY_DIR}/${entry}" SYMBOLIC)
    endif()
  endforeach()
endfunction()

krv_link_header_only(asio asio.hpp CLI nlohmann kissfft)

add_library(krv_header_only INTERFACE)
target_include_directories(krv_header_only SYSTEM INTERFACE "${KRV_HEADER_ONLY_DIR}")

add_library(krv_asio INTERFACE)
target_link_libraries(krv_asio INTERFACE krv_header_only Threads::Threads)
target_compile_definitions(krv_asio INTERFACE ASIO_STANDALONE ASIO_NO_DEPRECATED)
if(WIN32)
  target_link_libraries(krv_asio INTERFACE ws2_32 mswsock)
endif()
