# `cmake --install`: krv with its manual page, the completion of shells, examples and documents.
include(GNUInstallDirs)

install(TARGETS krv RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(FILES docs/krv.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES LICENSE README.md docs/user-guide.md docs/file-formats.md docs/instrument-commands.md
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/krv")
install(DIRECTORY docs/pictures DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/krv")
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/krv"
  PATTERN "*.cpp" EXCLUDE PATTERN "*.session" EXCLUDE)

# krv makes the scripts itself; one for another system doesn't run here.
if(NOT CMAKE_CROSSCOMPILING)
  set(krv_completion "${CMAKE_BINARY_DIR}/completion")
  install(CODE "
    file(MAKE_DIRECTORY \"${krv_completion}\")
    foreach(name_and_shell \"krv bash\" \"_krv zsh\" \"krv.fish fish\")
      separate_arguments(pair UNIX_COMMAND \"\${name_and_shell}\")
      list(POP_FRONT pair name shell)
      execute_process(COMMAND \"$<TARGET_FILE:krv>\" completion \"\${shell}\"
        OUTPUT_FILE \"${krv_completion}/\${name}\" COMMAND_ERROR_IS_FATAL ANY)
    endforeach()")
  install(FILES "${krv_completion}/krv"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
  install(FILES "${krv_completion}/_krv"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions")
  install(FILES "${krv_completion}/krv.fish"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
endif()
