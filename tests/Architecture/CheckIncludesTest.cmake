# Checks the check: it must pass on the sound fixture, and on the broken one fail with exactly the listed faults.
#
#   cmake -D QT_CORE_HEADERS=<QtCore's include folder> -P CheckIncludesTest.cmake
#
# Each line of a fixture names a file and one of its includes; in the broken fixture the line is the expected fault.
cmake_minimum_required(VERSION 3.25)

function(make_source_tree fixture root)
    file(REMOVE_RECURSE "${root}")
    file(STRINGS "${CMAKE_CURRENT_LIST_DIR}/Fixtures/${fixture}.txt" lines)
    foreach(line IN LISTS lines)
        string(REGEX MATCH "^([^:]+): (#include (<[^>]+>|\"[^\"]+\"|[A-Z_]+))?" matched "${line}")
        file(APPEND "${root}/${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}\n")
    endforeach()
endfunction()

function(check fixture exit_code_result output_result)
    set(root "${CMAKE_CURRENT_BINARY_DIR}/include-fixtures/${fixture}")
    make_source_tree(${fixture} "${root}")
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -D "SOURCE_ROOT=${root}" -D "QT_CORE_HEADERS=${QT_CORE_HEADERS}"
                -P "${CMAKE_CURRENT_LIST_DIR}/CheckIncludes.cmake"
        RESULT_VARIABLE exit_code
        ERROR_VARIABLE output
    )
    set(${exit_code_result} "${exit_code}" PARENT_SCOPE)
    set(${output_result} "${output}" PARENT_SCOPE)
endfunction()

check(Sound exit_code output)
if(NOT exit_code EQUAL 0)
    message(SEND_ERROR "Sound includes are refused:\n${output}")
endif()

check(Broken exit_code output)
if(exit_code EQUAL 0)
    message(SEND_ERROR "Broken includes are accepted")
endif()
string(REGEX REPLACE "CMake Error.*" "" faults "${output}")
file(READ "${CMAKE_CURRENT_LIST_DIR}/Fixtures/Broken.txt" expected_faults)
if(NOT faults STREQUAL expected_faults)
    message(SEND_ERROR "Expected:\n${expected_faults}\nFound:\n${faults}")
endif()
