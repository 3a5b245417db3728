# The Debian package, made by `cpack` in a build for /usr: see `./dev package`.
set(packaging "${PROJECT_SOURCE_DIR}/packaging")
find_program(GZIP gzip REQUIRED)
add_custom_command(
  OUTPUT "${PROJECT_BINARY_DIR}/changelog.gz"
  COMMAND "${CMAKE_COMMAND}" -E copy "${packaging}/changelog" "${PROJECT_BINARY_DIR}/changelog"
  COMMAND "${GZIP}" -9nf "${PROJECT_BINARY_DIR}/changelog"
  DEPENDS "${packaging}/changelog"
  VERBATIM)
add_custom_target(changelog ALL DEPENDS "${PROJECT_BINARY_DIR}/changelog.gz")
install(FILES "${PROJECT_BINARY_DIR}/changelog.gz" "${packaging}/copyright"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kw4tools)
set(CPACK_PACKAGE_CONTACT "The KW4TOOLS team <kw4tools@example.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "common services of the product-data suite")
set(CPACK_PACKAGE_DESCRIPTION_FILE "${packaging}/description")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "vim-tiny | editor, g++, cmake, pkg-config")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=") # later ones of the same soname do as well
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${packaging}/triggers")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  "${PROJECT_BINARY_DIR}/Platform" "${PROJECT_BINARY_DIR}/VirtualServices/KW4TOOLS.m")
set(CPACK_SOURCE_IGNORE_FILES "^${PROJECT_SOURCE_DIR}/build/" "/[.]git/")
include(CPack)
