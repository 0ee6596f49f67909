# KRV_SANITIZE=address,undefined instruments the whole build; a finding ends the program. With `thread`
# races are found.
if(KRV_SANITIZE)
  add_compile_options(-fsanitize=${KRV_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KRV_SANITIZE})
  # The checks of every pointer take a fifth of a build's time, and find only what ends a program anyway, or
  # what no supported processor minds. The fuzzers have them.
  if(NOT KRV_BUILD_FUZZERS)
    add_compile_options(-fno-sanitize=null,alignment)
  endif()
  # Clang's mark in front of each function is more than its assembler can place before a coroutine.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND KRV_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize=function)
  endif()
  # It can't follow fences; Asio does without them.
  if(KRV_SANITIZE MATCHES "thread")
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-tsan>)
    add_compile_definitions(ASIO_DISABLE_FENCED_BLOCK)
  endif()
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
# The fuzz engine follows which branches an input takes; only its own programs link its main.
if(KRV_BUILD_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()
