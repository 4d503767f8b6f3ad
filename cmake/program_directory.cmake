# SPDX-License-Identifier: GPL-3.0-or-later
#
# The program directory holds the executable and what stands beside it from the start: the language packs that it
# does not carry inside itself.

file(GLOB packs CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/assets/lang/*)
list(FILTER packs EXCLUDE REGEX "/CHINESE\\.INI$")
set(copies)
foreach(pack ${packs})
    get_filename_component(name ${pack} NAME)
    set(copy ${CMAKE_BINARY_DIR}/app/Lang/${name})
    add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_COMMAND} -E copy ${pack} ${copy} DEPENDS ${pack} VERBATIM)
    list(APPEND copies ${copy})
endforeach()
add_custom_target(program_directory DEPENDS ${copies})
add_dependencies(zelqor program_directory)
