# The targets format, format-check and lint.

set(code_folders app scan analysis results cli tests tools bench)
find_program(CLANG_FORMAT NAMES clang-format-14 clang-format)

function(quillory_add_format_target name options comment)
    add_custom_target(${name}
        COMMAND "${CMAKE_COMMAND}"
            "-DCLANG_FORMAT=${CLANG_FORMAT}" "-DOPTIONS=${options}" "-DFOLDERS=${code_folders}"
            -P "${PROJECT_SOURCE_DIR}/cmake/RunClangFormat.cmake"
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        COMMENT "${comment}"
        VERBATIM)
endfunction()
quillory_add_format_target(format -i "Formatting the code")
quillory_add_format_target(format-check "--dry-run;-Werror" "Checking the format of the code")

# The sources include files that moc and uic generate.
add_custom_target(lint
    COMMAND "${PROJECT_SOURCE_DIR}/tools/lint.py" "${CMAKE_BINARY_DIR}"
    COMMENT "Linting the code"
    USES_TERMINAL
    VERBATIM)
add_dependencies(lint autogen)
