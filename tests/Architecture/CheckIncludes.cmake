# Checks that includes run downwards only, that no view includes another, and that the layers below the window include
# nothing of Qt but QtCore.
#
#   cmake -D SOURCE_ROOT=<src> -D QT_CORE_HEADERS=<QtCore's include folder> -P CheckIncludes.cmake
#
# Prints one line for every include that breaks a rule and fails if there was one.
cmake_minimum_required(VERSION 3.25)

# The rooms (folders), and what each may include besides itself. A file belongs to the innermost room that contains it.
set(rooms
    App
    Core
    Platform
    Platform/Desktop
    Platform/Desktop/Linux
    Platform/Linux
    Services
    UI/Styles
    UI/Views/Chart
    UI/Views/Inspector
    UI/Views/Search
    UI/Views/Sidebar
    UI/Views/State
    UI/Views/Treemap
    UI/Views/Window
    UI/Widgets
    Utilities
)
set(views UI/Views/Chart UI/Views/Inspector UI/Views/Search UI/Views/Sidebar UI/Views/Treemap)
set(below_Utilities)
set(below_Platform Utilities)
set(below_Platform/Linux Utilities Platform)
set(below_Platform/Desktop Utilities Platform)
set(below_Platform/Desktop/Linux Utilities Platform Platform/Desktop)
set(below_Core Utilities Platform)
set(below_Services Utilities Platform Core)
set(below_UI/Views/State Utilities Platform Core Services)
set(below_UI/Styles Utilities Platform Platform/Desktop)
set(below_UI/Widgets Utilities Platform UI/Styles)
foreach(view IN LISTS views)
    set(below_${view} Utilities Platform Core Services UI/Views/State UI/Styles UI/Widgets)
endforeach()
set(below_UI/Views/Window
    Utilities Platform Platform/Desktop Core Services UI/Views/State UI/Styles UI/Widgets ${views})
set(below_App ${below_UI/Views/Window} UI/Views/Window)

# The rooms that may use the whole of Qt; the others may use QtCore.
set(rooms_with_all_of_qt App Platform/Desktop Platform/Desktop/Linux UI/Styles UI/Views/Window UI/Widgets ${views})

function(room_of path result)
    get_filename_component(folder "${path}" DIRECTORY)
    while(folder AND NOT folder IN_LIST rooms)
        get_filename_component(folder "${folder}" DIRECTORY)
    endwhile()
    set(${result} "${folder}" PARENT_SCOPE)
endfunction()

# Why a file of `room` may not include `header`, or nothing if it may.
function(fault_of room header result)
    set(fault "")
    if(header MATCHES "^(private/)?Q[A-Za-z0-9_]+$|^Qt[A-Z][A-Za-z0-9]*/|(^|/)q[a-z0-9_]+\\.h$")
        string(REGEX REPLACE "^QtCore/" "" name "${header}")
        if(NOT room IN_LIST rooms_with_all_of_qt AND NOT EXISTS "${QT_CORE_HEADERS}/${name}")
            set(fault "is not part of QtCore")
        endif()
    elseif(header MATCHES "^\\.\\.?/|/\\.\\.?/")
        set(fault "is not written from the source root")
    elseif(EXISTS "${SOURCE_ROOT}/${header}")
        room_of("${header}" target)
        if(NOT target STREQUAL room AND NOT target IN_LIST below_${room})
            set(fault "leads to ${target}, which is not below ${room}")
        endif()
    else()
        room_of("${header}" target)
        if(target)
            set(fault "does not exist")
        endif()
    endif()
    set(${result} "${fault}" PARENT_SCOPE)
endfunction()

function(check_file file faults)
    room_of("${file}" room)
    if(NOT room)
        message("${file}: belongs to no room")
        math(EXPR ${faults} "${${faults}} + 1")
        set(${faults} "${${faults}}" PARENT_SCOPE)
        return()
    endif()

    file(STRINGS "${SOURCE_ROOT}/${file}" lines REGEX "^[ \t]*#[ \t]*include" ENCODING UTF-8)
    foreach(line IN LISTS lines)
        set(fault "cannot be read")
        if(line MATCHES "include[ \t]*([<\"])([^>\"]+)[>\"]")
            set(is_quoted "${CMAKE_MATCH_1}")
            set(header "${CMAKE_MATCH_2}")
            fault_of("${room}" "${header}" fault)
            if(NOT fault AND is_quoted STREQUAL "\"" AND NOT EXISTS "${SOURCE_ROOT}/${header}"
               AND NOT header MATCHES "^[A-Za-z]+\\.moc$")
                set(fault "is not written from the source root")
            endif()
        endif()
        if(fault)
            message("${file}: ${line} ${fault}")
            math(EXPR ${faults} "${${faults}} + 1")
        endif()
    endforeach()
    set(${faults} "${${faults}}" PARENT_SCOPE)
endfunction()

if(NOT EXISTS "${QT_CORE_HEADERS}/QString")
    message(FATAL_ERROR "QT_CORE_HEADERS is not QtCore's include folder: ${QT_CORE_HEADERS}")
endif()
file(GLOB_RECURSE files RELATIVE "${SOURCE_ROOT}" "${SOURCE_ROOT}/*.h" "${SOURCE_ROOT}/*.cpp")
list(LENGTH files file_count)
if(file_count EQUAL 0)
    message(FATAL_ERROR "There is nothing to check in ${SOURCE_ROOT}")
endif()

set(fault_count 0)
foreach(file IN LISTS files)
    check_file("${file}" fault_count)
endforeach()
if(fault_count GREATER 0)
    message(FATAL_ERROR "${fault_count} of the includes in ${file_count} files break the rules")
endif()
message("The includes of ${file_count} files keep the rules")
