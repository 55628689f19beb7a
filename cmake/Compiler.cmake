# How everything of ours is compiled. Targets take it over by linking orv_flags.
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(ORV_CCACHE ccache)
if(ORV_CCACHE)
    # Precompiled headers are found again only when ccache does not look at their time stamps.
    set(launcher ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${ORV_CCACHE})
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

add_library(orv_flags INTERFACE)
target_compile_options(orv_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>)
# GCC 12 sees overflows inside its own strings where it has inlined them.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(orv_flags INTERFACE
        $<$<COMPILE_LANGUAGE:CXX>:-Wno-array-bounds;-Wno-stringop-overflow;-Wno-stringop-overread;-Wno-restrict>)
endif()
if(ORV_WERROR)
    target_compile_options(orv_flags INTERFACE -Werror)
endif()
# Sanitizers are for all targets, the test framework's included.
if(ORV_SANITIZE)
    add_compile_options(-fsanitize=${ORV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ORV_SANITIZE})
endif()
