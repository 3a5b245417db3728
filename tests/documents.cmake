# What the documents show is built and run.
file(GLOB documents CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
  "${PROJECT_SOURCE_DIR}/*.md" "${PROJECT_SOURCE_DIR}/docs/*.md" "${PROJECT_SOURCE_DIR}/docs/*/*.md"
  "${PROJECT_SOURCE_DIR}/examples/*.md" "${PROJECT_SOURCE_DIR}/examples/*/*.md")
foreach(document IN LISTS documents)
  add_test(NAME "document.${document}" COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/document.sh"
    "${PROJECT_SOURCE_DIR}/${document}" "$<TARGET_FILE_DIR:kw4tools>")
  set_tests_properties("document.${document}" PROPERTIES ENVIRONMENT "${KW_TEST_ENVIRONMENT}")
endforeach()

# What is written by a program.
add_test(NAME document.intervals COMMAND sh -c
  "\"$1\" \"$2\" | diff -u \"$3\" -" sh "${PROJECT_SOURCE_DIR}/docs/intervals.sh"
  "$<TARGET_FILE:kw4tools>" "${PROJECT_SOURCE_DIR}/docs/intervals.md")
