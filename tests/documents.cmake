# What the documents show is built and run. The programs of the guides, and the libraries that they
# load, are in one folder.
set(guide "${PROJECT_BINARY_DIR}/examples/guide")
add_subdirectory("${PROJECT_SOURCE_DIR}/examples/guide" "${guide}")
add_library(Bicycle MODULE "${PROJECT_SOURCE_DIR}/examples/schema/Bicycle.cpp")
add_library(SiteSecurity MODULE "${PROJECT_SOURCE_DIR}/examples/security/SiteSecurity.cpp")
get_property(guide_programs DIRECTORY "${PROJECT_SOURCE_DIR}/examples/guide"
  PROPERTY BUILDSYSTEM_TARGETS)
foreach(target IN ITEMS Bicycle SiteSecurity ${guide_programs})
  target_link_libraries(${target} PRIVATE KW4TOOLS::KW4TOOLS)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  set_target_properties(${target} PROPERTIES
    CXX_VISIBILITY_PRESET hidden LIBRARY_OUTPUT_DIRECTORY "${guide}")
endforeach()

file(GLOB documents CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
  "${PROJECT_SOURCE_DIR}/*.md" "${PROJECT_SOURCE_DIR}/docs/*.md" "${PROJECT_SOURCE_DIR}/docs/*/*.md"
  "${PROJECT_SOURCE_DIR}/examples/*.md" "${PROJECT_SOURCE_DIR}/examples/*/*.md")
foreach(document IN LISTS documents)
  add_test(NAME "document.${document}" COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/document.sh"
    "${PROJECT_SOURCE_DIR}/${document}" "${guide}" "$<TARGET_FILE_DIR:kw4tools>")
  set_tests_properties("document.${document}" PROPERTIES ENVIRONMENT "${KW_TEST_ENVIRONMENT}")
endforeach()

# The code in the comments of the public headers.
get_target_property(headers ZORPLATFORM KW_PUBLIC_HEADERS)
get_target_property(library_headers KW4TOOLS KW_PUBLIC_HEADERS)
add_test(NAME document.snippets COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/snippets.sh"
  "${PROJECT_SOURCE_DIR}" "${CMAKE_CXX_COMPILER}" ${headers} ${library_headers})

# What is written by a program, or tells of the sources.
add_test(NAME document.intervals COMMAND sh -c
  "\"$1\" \"$2\" | diff -u \"$3\" -" sh "${PROJECT_SOURCE_DIR}/docs/intervals.sh"
  "$<TARGET_FILE:kw4tools>" "${PROJECT_SOURCE_DIR}/docs/intervals.md")
add_test(NAME document.environment COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/environment.sh"
  "${PROJECT_SOURCE_DIR}")
