# The program; tests run it as it was built.
function(kw_program_test unit)
  kw_test(${unit})
  add_dependencies(${unit}_test kw4tools)
  target_compile_definitions(${unit}_test PRIVATE
    KW4TOOLS_PROGRAM="$<TARGET_FILE:kw4tools>" KW4TOOLS_VERSION="${PROJECT_VERSION}")
endfunction()
if(KW4TOOLS_TOOLS)
  # The parts of the program that stand alone.
  kw_test(IntervalDrawing kw4tools_commands)
  kw_test(Json kw4tools_commands)
  kw_test(NearestName kw4tools_commands)
  kw_test(SchemaCheck kw4tools_commands)
  foreach(library IN ITEMS Good WithoutCreation Dependency Dependent Lacking Lazy Hosted)
    string(TOUPPER ${library} macro)
    kw_uses_library(SchemaCheck KW_SCHEMA_${macro} Schema${library})
  endforeach()

  kw_program_test(kw4tools)
  kw_program_test(kw4tools_colours)
  kw_program_test(kw4tools_editing)
  kw_program_test(kw4tools_files)
  kw_program_test(kw4tools_json)
  kw_program_test(kw4tools_messages)
  kw_program_test(kw4tools_models)
  target_compile_definitions(kw4tools_models_test PRIVATE KW_C_COMPILER="${CMAKE_C_COMPILER}")
  kw_program_test(kw4tools_paths)
  kw_program_test(kw4tools_report)
  target_link_libraries(kw4tools_report_test PRIVATE KW4TOOLS::KW4TOOLS)
  kw_program_test(kw4tools_sequences)
  kw_program_test(kw4tools_settings)
  kw_program_test(kw4tools_status)
  kw_program_test(kw4tools_text)

  add_test(NAME demo COMMAND "${PROJECT_SOURCE_DIR}/tools/demo.sh" "$<TARGET_FILE:kw4tools>")

  # The man page and the completions.
  add_test(NAME completions COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/completions.sh"
    "$<TARGET_FILE_DIR:kw4tools_pages>" "$<TARGET_FILE_DIR:kw4tools>")
  set_tests_properties(completions PROPERTIES TIMEOUT 60) # it waits for what a shell prints

  add_executable(find_file "${PROJECT_SOURCE_DIR}/examples/find_file.cpp")
  target_link_libraries(find_file PRIVATE KW4TOOLS::KW4TOOLS)
  add_test(NAME example.find_file COMMAND "$<TARGET_FILE:find_file>" cmake_install.cmake)
  set_tests_properties(example.find_file PROPERTIES
    WORKING_DIRECTORY "${PROJECT_BINARY_DIR}" ENVIRONMENT "ZOR_SETTINGS_PATH=/nowhere"
    PASS_REGULAR_EXPRESSION "^cmake_install.cmake\n$")
  include(documents.cmake)
endif()
