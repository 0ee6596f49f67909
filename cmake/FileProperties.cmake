# The properties that Windows shows of a program: version, maker, copyright. Those of a library come with
# krv_add_com_library.
file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" KRV_COPYRIGHT REGEX "^Copyright" LIMIT_COUNT 1)
string(REGEX REPLACE "\\. All rights.*" "" KRV_COPYRIGHT "${KRV_COPYRIGHT}")

# krv_describe_program(NAME DESCRIPTION [MANIFEST]): with the file of a manifest, if there is one.
function(krv_describe_program name description)
  if(NOT WIN32)
    return()
  endif()
  set(KRV_PROGRAM "${name}")
  set(KRV_DESCRIPTION "${description}")
  set(KRV_MANIFEST_LINE "")
  if(ARGN)
    set(KRV_MANIFEST_LINE "1 24 \"${ARGN}\"")
  endif()
  set(resources "${CMAKE_CURRENT_BINARY_DIR}/${name}.rc")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/Program.rc.in" "${resources}" @ONLY)
  set_source_files_properties("${resources}" PROPERTIES OBJECT_DEPENDS "${ARGN}")
  target_sources(${name} PRIVATE "${resources}")
endfunction()
