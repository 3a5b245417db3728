# What the two shared libraries have in common: hidden symbols, an export list, installed headers.

define_property(TARGET PROPERTY KW_EXPORT_LISTS)
define_property(TARGET PROPERTY KW_PUBLIC_HEADERS)
define_property(TARGET PROPERTY KW_HEADER_DIRECTORY)

# kw_shared_library(<target> EXPORT_NAME <name> NAMESPACE <ns> HEADER_DIRECTORY <dir>)
# Creates the library; areas and sources are added by kw_add_area and target_sources.
function(kw_shared_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXPORT_NAME;NAMESPACE;HEADER_DIRECTORY" "")
  add_library(${target} SHARED)
  add_library(${arg_NAMESPACE}::${arg_EXPORT_NAME} ALIAS ${target})
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:strict_build>
    $<BUILD_INTERFACE:hardened_build>)
  target_compile_features(${target} PUBLIC cxx_std_17)
  kw_precompile(${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${arg_EXPORT_NAME}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    KW_HEADER_DIRECTORY "${CMAKE_INSTALL_INCLUDEDIR}/${arg_HEADER_DIRECTORY}")
  target_include_directories(${target} INTERFACE
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/${arg_HEADER_DIRECTORY}>)
  # A program's own function of the same name must not replace one of ours in calls from inside the
  # library; variables stay shared with the program, which is why this is not plain -Bsymbolic.
  target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  if(NOT KW4TOOLS_SANITIZER)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()

# kw_add_area(<target> SOURCES … HEADERS …)
# Adds the sources in src/ and the public headers in include/ below the current directory.
function(kw_add_area target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS")
  list(TRANSFORM arg_SOURCES PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/src/")
  list(TRANSFORM arg_HEADERS PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/include/")
  target_sources(${target} PRIVATE ${arg_SOURCES})
  kw_combine(${target} ${arg_SOURCES})
  set_property(TARGET ${target} APPEND PROPERTY KW_PUBLIC_HEADERS ${arg_HEADERS})
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>
    PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/src)
  if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/exports.txt")
    set_property(TARGET ${target} APPEND PROPERTY KW_EXPORT_LISTS "${CMAKE_CURRENT_SOURCE_DIR}/exports.txt")
  endif()
endfunction()

# kw_finish_library(<target> <version tag>)
# Writes the version script from the areas' exports.txt (one demangled name a line, '#' comments) and
# the install rules. Call it when all areas are added.
function(kw_finish_library target tag)
  get_target_property(lists ${target} KW_EXPORT_LISTS)
  set(names "")
  foreach(list IN LISTS lists)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${list}")
    file(STRINGS "${list}" lines REGEX "^[^#]")
    foreach(line IN LISTS lines)
      string(APPEND names "      \"${line}\";\n")
    endforeach()
  endforeach()
  set(counts "")
  if(KW4TOOLS_COVERAGE)
    target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/CountedLibrary.cpp")
    set(counts "\n    WriteCounts;")
  endif()
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(CONFIGURE OUTPUT "${script}" @ONLY CONTENT
    "${tag} {\n  global:\n    extern \"C++\" {\n${names}    };${counts}\n  local: *;\n};\n")
  target_link_options(${target} PRIVATE "-Wl,--version-script=${script}")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")

  get_target_property(export_name ${target} EXPORT_NAME)
  get_target_property(header_directory ${target} KW_HEADER_DIRECTORY)
  get_target_property(headers ${target} KW_PUBLIC_HEADERS)
  install(FILES ${headers} DESTINATION "${header_directory}")
  install(TARGETS ${target} EXPORT ${target}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endfunction()

# kw_from_prefix(<variable> <directory>)
# The directory as a .pc file names it.
function(kw_from_prefix variable directory)
  if(IS_ABSOLUTE "${directory}")
    set(${variable} "${directory}" PARENT_SCOPE)
  else()
    set(${variable} "\${prefix}/${directory}" PARENT_SCOPE)
  endif()
endfunction()

# kw_library_rpath(<variable> <full directory>)
# Where what is installed in that directory finds the libraries: beside it, wherever the tree was
# moved to, unless they have an absolute directory of their own.
function(kw_library_rpath variable directory)
  set(rpath "${CMAKE_INSTALL_FULL_LIBDIR}")
  if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    file(RELATIVE_PATH rpath "${directory}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    string(PREPEND rpath "$ORIGIN/")
  endif()
  set(${variable} "${rpath}" PARENT_SCOPE)
endfunction()

# kw_install_package(<target> PACKAGE <name> NAMESPACE <ns> PC <pkg-config name>)
# Installs <name>Config.cmake (from cmake/<name>Config.cmake.in), its version file and <pc>.pc.
function(kw_install_package target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "PACKAGE;NAMESPACE;PC" "")
  set(directory "${CMAKE_INSTALL_LIBDIR}/cmake/${arg_PACKAGE}")
  configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/${arg_PACKAGE}Config.cmake.in"
    "${CMAKE_CURRENT_BINARY_DIR}/${arg_PACKAGE}Config.cmake"
    INSTALL_DESTINATION "${directory}")
  write_basic_package_version_file(
    "${CMAKE_CURRENT_BINARY_DIR}/${arg_PACKAGE}ConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
  install(EXPORT ${target}Targets NAMESPACE ${arg_NAMESPACE}:: DESTINATION "${directory}")
  install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/${arg_PACKAGE}Config.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/${arg_PACKAGE}ConfigVersion.cmake"
    DESTINATION "${directory}")
  # The .pc file finds its prefix from its own place, so that the installed tree may be moved; but
  # what was configured with an absolute directory is there and nowhere else.
  kw_from_prefix(KW_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
  kw_from_prefix(KW_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
  set(KW_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    file(RELATIVE_PATH KW_PC_PREFIX
      "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
    string(PREPEND KW_PC_PREFIX "\${pcfiledir}/")
  endif()
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${arg_PC}.pc.in"
    "${CMAKE_CURRENT_BINARY_DIR}/${arg_PC}.pc" @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${arg_PC}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()
