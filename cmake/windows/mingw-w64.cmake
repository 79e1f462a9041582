# A 64-bit Windows library and program made on Debian with mingw-w64 (packages mingw-w64 and wine64). The C++ run-time
# library with its threads is linked in, so that Tool.dll needs nothing but the system.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(static_run_time "-static-libgcc -static-libstdc++ -static")
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "${static_run_time}")
endforeach()

# No library of the machine that builds is one for Windows.
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_FIND_ROOT_PATH}/lib/pkgconfig)

# The build's programs run in Wine, in a prefix of the build's own.
if(NOT TOOL_WINE_PREFIX)
    set(TOOL_WINE_PREFIX ${CMAKE_BINARY_DIR}/wine)
endif()
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine ${TOOL_WINE_PREFIX})
