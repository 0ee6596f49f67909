# Warnings for every target of this project; third-party headers are included as SYSTEM.
add_library(krv_warnings INTERFACE)
target_compile_options(krv_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wnull-dereference -Werror)
# GCC 12 reports these in its own library headers when sanitizers or -O3 inline across them.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(krv_warnings INTERFACE -Wno-null-dereference -Wno-maybe-uninitialized
    -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
