# SPDX-License-Identifier: GPL-3.0-or-later
#
# The viewer that each book begins with: small, without Qt, with everything in it but the base X libraries. (PNG and
# zlib are among them: the library that draws X's letters needs both.) It is built for size whatever the preset is, and
# never with a sanitizer, which its readers would not have.

file(GLOB sources CONFIGURE_DEPENDS viewer/*.cpp viewer/*.h src/platform/book/*.cpp)
find_library(FLTK_STATIC libfltk.a REQUIRED)
find_library(JPEG_STATIC libjpeg.a REQUIRED)
add_executable(viewer ${sources})
set_target_properties(viewer PROPERTIES OUTPUT_NAME ZelqorViewer SUFFIX .dat RUNTIME_OUTPUT_DIRECTORY ${runtime}
    AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
target_include_directories(viewer PRIVATE viewer src)
target_compile_options(viewer PRIVATE ${ZELQOR_WARNINGS} -Os -g0 -ffunction-sections -fdata-sections
    -fno-exceptions -fno-rtti -fno-asynchronous-unwind-tables)
target_link_options(viewer PRIVATE -s -no-pie -Wl,--gc-sections,-z,noseparate-code,--build-id=none -static-libstdc++ -static-libgcc)
target_link_libraries(viewer PRIVATE ${FLTK_STATIC} ${JPEG_STATIC}
    png16 z Xrender Xcursor Xfixes Xext Xft fontconfig Xinerama X11 pthread ${CMAKE_DL_LIBS} m)
carry(ZELQORVIEWER_EXE ${runtime}/ZelqorViewer.dat viewer)
