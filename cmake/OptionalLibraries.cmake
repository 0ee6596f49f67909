# Libraries that a build may be without: what needs them then says so when it is asked for.

# krv_matio: reads MATLAB files. There is none for Windows.
add_library(krv_matio INTERFACE)
if(NOT WIN32)
  find_library(KRV_LIBRARY_matio matio)
  find_path(KRV_HEADER_matio matio.h)
  if(KRV_LIBRARY_matio AND KRV_HEADER_matio)
    target_link_libraries(krv_matio INTERFACE "${KRV_LIBRARY_matio}")
    target_compile_definitions(krv_matio INTERFACE KRV_HAS_MATIO)
  endif()
endif()

# krv_hdf5: looks into MATLAB files of level 7.3 before matio does, which is linked to it itself.
add_library(krv_hdf5 INTERFACE)
if(NOT WIN32)
  find_library(KRV_LIBRARY_hdf5 NAMES hdf5_serial hdf5)
  find_path(KRV_HEADER_hdf5 hdf5.h PATH_SUFFIXES hdf5/serial)
  if(KRV_LIBRARY_hdf5 AND KRV_HEADER_hdf5)
    target_link_libraries(krv_hdf5 INTERFACE "${KRV_LIBRARY_hdf5}")
    target_include_directories(krv_hdf5 SYSTEM INTERFACE "${KRV_HEADER_hdf5}")
    target_compile_definitions(krv_hdf5 INTERFACE KRV_HAS_HDF5)
  endif()
endif()

# krv_zlib: unpacks compressed files. Empty where zlib isn't installed for the compiler in use.
add_library(krv_zlib INTERFACE)
# Of the cross compiler the static library comes first: its programs stand alone.
set(krv_static_z "")
if(WIN32)
  set(krv_static_z libz.a)
endif()
find_library(KRV_LIBRARY_zlib NAMES ${krv_static_z} z)
find_path(KRV_HEADER_z zlib.h)
if(KRV_LIBRARY_zlib AND KRV_HEADER_z)
  target_link_libraries(krv_zlib INTERFACE "${KRV_LIBRARY_zlib}")
  target_compile_definitions(krv_zlib INTERFACE KRV_HAS_ZLIB)
  if(WIN32)
    target_include_directories(krv_zlib SYSTEM INTERFACE "${KRV_HEADER_z}")
  endif()
endif()
