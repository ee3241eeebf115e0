# The targets format, format-check and lint.

set(code_folders app scan analysis results cli tests tools bench)
find_program(CLANG_FORMAT NAMES clang-format-14 clang-format)
find_program(RUN_CLANG_TIDY NAMES run-clang-tidy-14 run-clang-tidy)

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

# All source files of the compilation database except generated ones. Includes the files that moc and uic generate.
if(RUN_CLANG_TIDY)
    add_custom_target(lint
        COMMAND "${RUN_CLANG_TIDY}" -quiet -p "${CMAKE_BINARY_DIR}"
            "^${PROJECT_SOURCE_DIR}/(?!build/).*\\.cpp$"
        WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
        COMMENT "Linting the code"
        VERBATIM)
    add_dependencies(lint autogen)
else()
    add_custom_target(lint
        COMMAND "${CMAKE_COMMAND}" -E echo "run-clang-tidy is missing: install clang-tidy and configure again"
        COMMAND "${CMAKE_COMMAND}" -E false
        VERBATIM)
endif()
