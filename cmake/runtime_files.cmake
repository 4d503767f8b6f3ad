# SPDX-License-Identifier: GPL-3.0-or-later
#
# What the program carries inside itself and writes out at a start: each file is made here and put into the core room
# as the resource ":/custom/<KEY>".

set(runtime ${CMAKE_BINARY_DIR}/runtime)
file(MAKE_DIRECTORY ${runtime})
set(resources)
set(carried)

macro(carry key file)
    string(APPEND resources "<file alias=\"${key}\">${file}</file>\n")
    list(APPEND carried ${file} ${ARGN})
endmacro()

carry(CHINESE_INI ${CMAKE_SOURCE_DIR}/assets/lang/CHINESE.INI)

# The coder as a library of its own, for programs that work on the files in a database. It is compiled apart from the
# rooms: position-independent, one name to the outside, and never with a sanitizer that its caller would have to load.
file(GLOB sources CONFIGURE_DEPENDS src/platform/lzma/*.cpp src/platform/files/*.cpp)
add_library(zelqorzip SHARED ${sources})
set_target_properties(zelqorzip PROPERTIES PREFIX "" SUFFIX ".dll" LIBRARY_OUTPUT_DIRECTORY ${runtime}
    AUTOMOC OFF LINK_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/zelqorzip.map)
target_compile_options(zelqorzip PRIVATE ${ZELQOR_WARNINGS})
foreach(room lzma files errors)
    target_include_directories(zelqorzip PRIVATE ${CMAKE_BINARY_DIR}/rooms/${room})
endforeach()
target_link_libraries(zelqorzip PRIVATE Qt6::Core LibLZMA::LibLZMA)
target_link_options(zelqorzip PRIVATE -s -Wl,--version-script=${CMAKE_SOURCE_DIR}/cmake/zelqorzip.map)
carry(ZELQORZIP_DLL ${runtime}/zelqorzip.dll zelqorzip)

# The parts that all skins share: the style sheet's frame and its small pictures.
file(GLOB_RECURSE parts CONFIGURE_DEPENDS assets/skins/library/*)
add_custom_command(OUTPUT ${runtime}/SkinH_VB6.dll
    COMMAND Qt6::rcc --binary -o ${runtime}/SkinH_VB6.dll ${CMAKE_SOURCE_DIR}/assets/skins/library/library.qrc
    DEPENDS ${parts} VERBATIM)
add_custom_target(skin_library DEPENDS ${runtime}/SkinH_VB6.dll)
carry(SKINH_VB6_DLL ${runtime}/SkinH_VB6.dll)
foreach(number 1 2 3 4 5)
    carry(${number}_SKIN ${CMAKE_SOURCE_DIR}/assets/skins/${number}.skin)
endforeach()

add_executable(updater src/updater/main.cpp)
set_target_properties(updater PROPERTIES OUTPUT_NAME Update SUFFIX .exe RUNTIME_OUTPUT_DIRECTORY ${runtime})
target_link_libraries(updater PRIVATE zelqor_updater zelqor_options)
target_link_options(updater PRIVATE -s)
carry(UPDATE_EXE ${runtime}/Update.exe updater)
carry(UPDATE_RIS ${CMAKE_SOURCE_DIR}/assets/update/UPDATE.RIS)

add_executable(make_icon cmake/make_icon.cpp)
target_compile_options(make_icon PRIVATE ${ZELQOR_WARNINGS})
target_link_libraries(make_icon PRIVATE Qt6::Gui Qt6::Svg)
foreach(name home book note recyclebin)
    set(drawing ${CMAKE_SOURCE_DIR}/assets/icons/tree/${name}.svg)
    add_custom_command(OUTPUT ${runtime}/${name}.ico
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:make_icon> ${drawing} ${runtime}/${name}.ico
        DEPENDS make_icon ${drawing} VERBATIM)
    string(TOUPPER ${name} upper)
    carry(${upper}_ICO ${runtime}/${name}.ico)
endforeach()

include(cmake/viewer.cmake)

# Empty office documents for new ones: the parts of each package are text, put together here.
foreach(kind docx xlsx pptx)
    set(folder ${CMAKE_SOURCE_DIR}/assets/blank/${kind})
    file(GLOB_RECURSE parts CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*.xml ${folder}/*.rels)
    list(TRANSFORM parts PREPEND ${folder}/ OUTPUT_VARIABLE whole)
    add_custom_command(OUTPUT ${runtime}/blank.${kind}
        COMMAND ${CMAKE_COMMAND} -E tar cf ${runtime}/blank.${kind} --format=zip ${parts}
        WORKING_DIRECTORY ${folder} DEPENDS ${whole} VERBATIM)
    string(TOUPPER ${kind} upper)
    carry(BLANK_${upper} ${runtime}/blank.${kind})
endforeach()

file(CONFIGURE OUTPUT ${runtime}/runtime.qrc CONTENT "<RCC><qresource prefix=\"/custom\">\n@resources@</qresource></RCC>\n" @ONLY)
add_custom_command(OUTPUT ${runtime}/qrc_runtime.cpp
    COMMAND Qt6::rcc --name runtime -o ${runtime}/qrc_runtime.cpp ${runtime}/runtime.qrc
    DEPENDS ${carried} ${runtime}/runtime.qrc VERBATIM)
set_property(SOURCE ${runtime}/qrc_runtime.cpp PROPERTY SKIP_AUTOGEN ON)
target_sources(zelqor_core PRIVATE ${runtime}/qrc_runtime.cpp)
