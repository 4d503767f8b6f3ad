# SPDX-License-Identifier: GPL-3.0-or-later
#
# A room is one folder of src/ and one static library. Its headers can be included as "<folder>/<file>.h" only by
# targets that link it: every room has an include root of its own, a directory that holds one link to the folder.
# A room may use only rooms on floors below its own, or its neighbours on floor 0. What it HIDES is linked, but its
# headers stay out of reach of the rooms above.

set(ZELQOR_WARNINGS -Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor -Werror)

add_library(zelqor_options INTERFACE)
target_compile_options(zelqor_options INTERFACE ${ZELQOR_WARNINGS})
target_compile_definitions(zelqor_options INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
if(ZELQOR_ASAN)
    target_compile_options(zelqor_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(zelqor_options INTERFACE -fsanitize=address,undefined)
endif()
if(ZELQOR_FUZZ) # the fuzzer is guided by what the rooms have run, not only by its own target
    target_compile_options(zelqor_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

include(cmake/common_headers.cmake)

function(zelqor_room folder)
    cmake_parse_arguments(ROOM "" "FLOOR" "USES;LINKS;HIDES" ${ARGN})
    get_filename_component(name ${folder} NAME)
    if(folder MATCHES "^ui/") # a wing may be called like the logic that it shows
        set(name ui_${name})
    endif()
    get_filename_component(parent ${folder} DIRECTORY)
    file(GLOB sources CONFIGURE_DEPENDS src/${folder}/*.cpp src/${folder}/*.h src/${folder}/*.ui src/${folder}/*.qrc)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$") # the executable's own
    set(code ${sources})
    list(FILTER code INCLUDE REGEX "\\.cpp$")

    set(root ${CMAKE_BINARY_DIR}/rooms/${name})
    file(MAKE_DIRECTORY ${root}/${parent})
    if(NOT EXISTS ${root}/${folder})
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
    endif()

    if(code)
        add_library(zelqor_${name} STATIC ${sources})
        set(scope PUBLIC)
    else()
        add_library(zelqor_${name} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(zelqor_${name} ${scope} ${root})
    set_property(GLOBAL PROPERTY ZELQOR_FLOOR_${name} ${ROOM_FLOOR})
    foreach(used ${ROOM_USES})
        get_property(floor GLOBAL PROPERTY ZELQOR_FLOOR_${used})
        if(floor GREATER_EQUAL ROOM_FLOOR AND NOT floor EQUAL 0)
            message(FATAL_ERROR "${folder} (floor ${ROOM_FLOOR}) may not use ${used} (floor ${floor})")
        endif()
        target_link_libraries(zelqor_${name} ${scope} zelqor_${used})
    endforeach()
    target_link_libraries(zelqor_${name} ${scope} ${ROOM_LINKS})
    if(code)
        target_link_libraries(zelqor_${name} PRIVATE zelqor_options ${ROOM_HIDES})
        zelqor_use_common_headers(zelqor_${name} ${ROOM_LINKS})
    endif()
    set_property(GLOBAL PROPERTY ZELQOR_LINKS_${name} ${ROOM_LINKS})
endfunction()
