# What every target of this project is compiled with; nothing of it reaches a user of the installed package.
add_library(tool_flags INTERFACE)
target_compile_features(tool_flags INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# Fused multiply-add rounds once where the formulas round twice: other bits, and now and then another pixel.
if(MSVC)
    target_compile_options(tool_flags INTERFACE /fp:precise /utf-8)
else()
    target_compile_options(tool_flags INTERFACE -ffp-contract=off)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND NOT EMSCRIPTEN)
        target_compile_definitions(tool_flags INTERFACE _FILE_OFFSET_BITS=64)  # files of 2 GB and more
        if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86|i.86|x86_64|AMD64|amd64)$")  # the x87 rounds to 64 bits first
            target_compile_options(tool_flags INTERFACE -msse2 -mfpmath=sse)
        endif()
    endif()
endif()

if(EMSCRIPTEN)
    set(CMAKE_CXX_COMPILE_OPTIONS_PIC "")  # one module, never loaded by another
    add_compile_options(-fwasm-exceptions "$<$<COMPILE_LANGUAGE:CXX>:SHELL:-include ${PROJECT_SOURCE_DIR}/cmake/web/missing_algorithms.h>")
    add_link_options(-fwasm-exceptions)
endif()

option(TOOL_WERROR "Treat warnings as errors" OFF)
add_library(tool_warnings INTERFACE)
if(MSVC)
    target_compile_options(tool_warnings INTERFACE /W4 $<$<BOOL:${TOOL_WERROR}>:/WX>)
else()
    target_compile_options(tool_warnings INTERFACE
        -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
        # Files compiled in a batch (unity.cmake) share their unnamed namespaces, and are taken for headers.
        $<$<BOOL:${CMAKE_UNITY_BUILD}>:-Wno-shadow>
        $<$<AND:$<BOOL:${CMAKE_UNITY_BUILD}>,$<CXX_COMPILER_ID:GNU>>:-Wno-subobject-linkage>
        $<$<BOOL:${TOOL_WERROR}>:-Werror>
        # g++ 12 warns of overlapping copies inside std::string's own operator+ (its bug 105651).
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endif()

set(TOOL_SANITIZE "" CACHE STRING "Sanitizers to build with, separated by commas")
if(TOOL_SANITIZE)
    add_compile_options(-fsanitize=${TOOL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TOOL_SANITIZE})
endif()

option(TOOL_COVERAGE "Count the lines and branches that the tests reach" OFF)
if(TOOL_COVERAGE)
    add_compile_options(--coverage -O0 -fprofile-update=atomic)  # counts of several threads, too
    add_link_options(--coverage)
endif()
