# In-process COM servers: type libraries from IDL, and the DLLs that carry them.
#
# widl has no system IDL of its own: the packages libwine-dev (IDL) and libwine (stdole2.tlb) have it.
if(NOT WIN32)
  return()
endif()

get_filename_component(compilerPrefix "${CMAKE_CXX_COMPILER}" NAME)
string(REGEX REPLACE "g\\+\\+.*$" "" compilerPrefix "${compilerPrefix}")
find_program(KRV_WIDL NAMES "${compilerPrefix}widl" widl)
set(KRV_IDL_HINTS /usr/include /usr/local/include /opt/wine-stable/include)
find_path(KRV_SYSTEM_IDL_DIR NAMES oaidl.idl PATHS ${KRV_IDL_HINTS}
  PATH_SUFFIXES wine/wine/windows wine/windows wine-development/windows
  NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
file(GLOB stdoleFiles /usr/lib/*/wine/*-windows/stdole2.tlb /usr/lib/wine/*-windows/stdole2.tlb
  /usr/local/lib*/wine/*-windows/stdole2.tlb /opt/wine-stable/lib*/wine/*-windows/stdole2.tlb)
if(stdoleFiles AND NOT KRV_STDOLE_DIR)
  list(GET stdoleFiles 0 stdoleFile)
  get_filename_component(stdoleDir "${stdoleFile}" DIRECTORY)
  set(KRV_STDOLE_DIR "${stdoleDir}" CACHE PATH "Folder of stdole2.tlb")
endif()
if(NOT KRV_WIDL OR NOT KRV_SYSTEM_IDL_DIR OR NOT KRV_STDOLE_DIR)
  message(FATAL_ERROR "The IDL compiler or what it imports is missing: install mingw-w64-tools, "
    "libwine-dev and libwine (KRV_WIDL=${KRV_WIDL}, KRV_SYSTEM_IDL_DIR=${KRV_SYSTEM_IDL_DIR}, "
    "KRV_STDOLE_DIR=${KRV_STDOLE_DIR}).")
endif()

# krv_add_type_library(NAME IDL): an interface library that gives includers <NAME.h>; the type
# library is NAME.tlb in the folder KRV_TYPE_LIBRARIES.
set(KRV_TYPE_LIBRARIES "${CMAKE_BINARY_DIR}/typelib")
function(krv_add_type_library name idl)
  file(MAKE_DIRECTORY "${KRV_TYPE_LIBRARIES}")
  set(header "${KRV_TYPE_LIBRARIES}/${name}.h")
  set(library "${KRV_TYPE_LIBRARIES}/${name}.tlb")
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(target -m64)
  else()
    set(target -m32)
  endif()
  add_custom_command(OUTPUT "${header}" COMMAND "${KRV_WIDL}" ${target} -I "${KRV_SYSTEM_IDL_DIR}"
    -h -o "${header}" "${idl}" DEPENDS "${idl}" VERBATIM)
  add_custom_command(OUTPUT "${library}" COMMAND "${KRV_WIDL}" ${target} -I "${KRV_SYSTEM_IDL_DIR}"
    -L "${KRV_STDOLE_DIR}" -t -o "${library}" "${idl}"
    COMMAND "${PROJECT_SOURCE_DIR}/cmake/timeless-type-library" "${library}" DEPENDS "${idl}" VERBATIM)
  add_custom_target(${name}_typelib DEPENDS "${header}" "${library}")
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE "${KRV_TYPE_LIBRARIES}")
  add_dependencies(${name} ${name}_typelib)
endfunction()

# krv_add_com_library(NAME FILE name DESCRIPTION text TYPE_LIBRARY name SOURCES... LIBRARIES...): the
# DLL FILE.dll with the server's exports, type library, version and manifest. Its sources define
# ThisComModule().
function(krv_add_com_library name)
  cmake_parse_arguments(ARG "" "FILE;DESCRIPTION;TYPE_LIBRARY" "SOURCES;LIBRARIES" ${ARGN})
  set(folder "${PROJECT_SOURCE_DIR}/src/windows/com")
  set(KRV_TYPE_LIBRARY "${KRV_TYPE_LIBRARIES}/${ARG_TYPE_LIBRARY}.tlb")
  set(KRV_MANIFEST "${folder}/resources/ComModule.manifest")
  set(KRV_DESCRIPTION "${ARG_DESCRIPTION}")
  set(KRV_FILE_NAME "${ARG_FILE}.dll")
  set(resources "${CMAKE_CURRENT_BINARY_DIR}/${name}.rc")
  configure_file("${folder}/resources/ComModule.rc.in" "${resources}" @ONLY)
  set_source_files_properties("${resources}" PROPERTIES
    OBJECT_DEPENDS "${KRV_TYPE_LIBRARY};${KRV_MANIFEST}")
  add_library(${name} SHARED ${ARG_SOURCES} "${folder}/ComExports.cpp" "${resources}"
    "${folder}/resources/ComModule.def")
  set_target_properties(${name} PROPERTIES PREFIX "" OUTPUT_NAME "${ARG_FILE}" UNITY_BUILD OFF)
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} krv_windows_com)
  add_dependencies(${name} ${ARG_TYPE_LIBRARY}_typelib)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_link_options(${name} PRIVATE -Wl,--enable-stdcall-fixup)
  endif()
endfunction()
