# Compiler settings that every target of this repository shares: the interface target `strict_build`.
add_library(strict_build INTERFACE)
target_compile_features(strict_build INTERFACE cxx_std_20)
target_compile_options(strict_build INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# At -O3 g++ 12 takes a string that is inserted into another for one that may overlap it.
target_compile_options(strict_build INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

# What makes mistakes in memory harder to use, for what is installed: `hardened_build`. Checks of
# the standard library, of buffer sizes and of return addresses, and tables that are read-only once
# the program is loaded. The checks need an optimizer, and sanitizers have better ones.
add_library(hardened_build INTERFACE)
if(NOT KW4TOOLS_SANITIZER)
  target_compile_options(hardened_build INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_GLIBCXX_ASSERTIONS;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2;-fstack-protector-strong>)
  target_link_options(hardened_build INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()

# kw_compile_quickly(<level>): for what is compiled more often than it is run long, in this directory
# and below. A development build optimizes it little; the presets of type Debug know its variables.
macro(kw_compile_quickly level)
  add_compile_options($<$<CONFIG:RelWithDebInfo>:${level}> $<$<CONFIG:RelWithDebInfo>:-g1>)
endmacro()

# For development, a build from nothing in less time. One without finds what a source forgets to
# include; and at -O3 g++ 12 warns of its own headers when they are precompiled.
option(KW4TOOLS_QUICK_BUILD "Precompile common headers, and compile several sources at a time" OFF)
if(KW4TOOLS_QUICK_BUILD)
  # g++ looks for garbage at 128 MB, which such headers fill by themselves.
  add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:--param=ggc-min-heapsize=250000>) # kB
endif()

# kw_precompile(<target> [<other>]): the headers of the standard library that nearly every source
# includes, compiled once for the target, or for the other one, which is compiled alike.
function(kw_precompile target)
  if(NOT KW4TOOLS_QUICK_BUILD)
    return()
  endif()
  if(ARGN)
    target_precompile_headers(${target} REUSE_FROM ${ARGN})
  else()
    target_precompile_headers(${target} PRIVATE
      <algorithm> <atomic> <map> <memory> <mutex> <string> <string_view> <vector>)
  endif()
endfunction()

# kw_combine(<target> <source>…): these sources are compiled six at a time, in their order. So two
# neighbours must not give the same name, in unnamed namespaces, to different things.
function(kw_combine target)
  if(NOT KW4TOOLS_QUICK_BUILD)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  # g++ sees that such a source is not the main one.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME directory)
  set(count 0)
  foreach(source IN LISTS ARGN)
    math(EXPR group "${count} / 6")
    math(EXPR count "${count} + 1")
    set_source_files_properties(${source} TARGET_DIRECTORY ${target}
      PROPERTIES UNITY_GROUP "${directory}_${group}")
  endforeach()
endfunction()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# One of: nothing, "address" (with undefined behaviour and leaks), "thread".
set(KW4TOOLS_SANITIZER "" CACHE STRING "Sanitizer to build with: address or thread")
if(KW4TOOLS_SANITIZER STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
elseif(KW4TOOLS_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(KW4TOOLS_SANITIZER)
  message(FATAL_ERROR "KW4TOOLS_SANITIZER is '${KW4TOOLS_SANITIZER}': say 'address' or 'thread'")
endif()

# What a libFuzzer program calls tells it which branches were taken.
if(KW4TOOLS_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
