# Cross-build for Windows 10 and later with Debian's compiler. The libraries are those
# that packaging/windows/dependencies has made; it leaves links to them in
# build/windows-parts.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

file(GLOB parts "${CMAKE_CURRENT_LIST_DIR}/../build/windows-parts/*")
set(CMAKE_FIND_ROOT_PATH ${parts} /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
list(TRANSFORM parts APPEND /lib/pkgconfig OUTPUT_VARIABLE pkgconfig)
list(JOIN pkgconfig ":" pkgconfig)
set(ENV{PKG_CONFIG_LIBDIR} "${pkgconfig}")

# The toolkit's own tools run on the machine that builds.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

# Windows 10; nothing that a user would have to install besides.
add_compile_definitions(_WIN32_WINNT=0x0A00)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)
