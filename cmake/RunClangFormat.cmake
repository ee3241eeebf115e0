# Runs clang-format with OPTIONS on all source files in FOLDERS. Run from the root of the project.

if(NOT CLANG_FORMAT)
    message(FATAL_ERROR "clang-format is missing: install it and configure again")
endif()
set(files "")
foreach(folder IN LISTS FOLDERS)
    file(GLOB_RECURSE found "${folder}/*.h" "${folder}/*.cpp")
    list(APPEND files ${found})
endforeach()
execute_process(COMMAND "${CLANG_FORMAT}" ${OPTIONS} ${files} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The code is not formatted: build the target 'format'")
endif()
