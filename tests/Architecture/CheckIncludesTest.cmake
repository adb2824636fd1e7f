# Checks the check: it must pass on the sound fixture, and on the broken one fail with exactly the listed faults.
#
#   cmake -D QT_CORE_HEADERS=<QtCore's include folder> -P CheckIncludesTest.cmake
cmake_minimum_required(VERSION 3.25)

function(check fixture exit_code_result output_result)
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -D "SOURCE_ROOT=${CMAKE_CURRENT_LIST_DIR}/Fixtures/${fixture}"
                -D "QT_CORE_HEADERS=${QT_CORE_HEADERS}" -P "${CMAKE_CURRENT_LIST_DIR}/CheckIncludes.cmake"
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
file(READ "${CMAKE_CURRENT_LIST_DIR}/Fixtures/Broken/faults.txt" expected_faults)
if(NOT faults STREQUAL expected_faults)
    message(SEND_ERROR "Expected:\n${expected_faults}\nFound:\n${faults}")
endif()
