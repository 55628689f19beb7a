# Libraries of others that we use. Header-only libraries come from the system's include folder, but one by one
# through links in the build tree: a cross build must never see the rest of that folder.
set(ORV_HEADERS_DIR ${PROJECT_BINARY_DIR}/headers)

function(orv_link_headers folder)
    find_path(ORV_FOUND_${folder} ${folder} PATHS /usr/include /usr/local/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
    file(MAKE_DIRECTORY ${ORV_HEADERS_DIR}/${folder}_headers)
    file(CREATE_LINK ${ORV_FOUND_${folder}}/${folder} ${ORV_HEADERS_DIR}/${folder}_headers/${folder} SYMBOLIC)
    add_library(orv_${folder} INTERFACE)
    target_include_directories(orv_${folder} SYSTEM INTERFACE ${ORV_HEADERS_DIR}/${folder}_headers)
endfunction()

if(ORV_TESTS OR ORV_FUZZ)
    orv_link_headers(boost)
    # Memory that one search may use to remember where to go back to, in blocks of 4 KB: 128 MB. The engine needs about
    # 100 bytes for each character above U+00FF inside a string, so its own limit of 4 MB refuses a text of 40,000
    # Cyrillic letters. Defined for whoever includes the engine, so that no two files disagree.
    target_compile_definitions(orv_boost INTERFACE BOOST_REGEX_MAX_BLOCKS=32768)
    # tests/judge/expression.cpp replaces a part of the pattern engine and names two of its private members, which older
    # releases lack.
    file(STRINGS ${ORV_FOUND_boost}/boost/version.hpp ORV_BOOST_VERSION REGEX "^#define BOOST_VERSION ")
    string(REGEX REPLACE "[^0-9]" "" ORV_BOOST_VERSION "${ORV_BOOST_VERSION}")
    if(ORV_BOOST_VERSION LESS 107600)
        message(FATAL_ERROR "The tests need Boost 1.76 or later: tests/judge/expression.cpp relies on the internals of "
            "Boost.Regex as they are since then. Found BOOST_VERSION ${ORV_BOOST_VERSION} in ${ORV_FOUND_boost}.")
    endif()
endif()
if(ORV_TOOLS)
    orv_link_headers(CLI)
    orv_link_headers(nlohmann)
endif()

find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)
find_package(Threads REQUIRED)

if(ORV_TESTS)
    # Built from the package's sources, so that the framework has our compiler and sanitizers.
    set(INSTALL_GTEST OFF)
    set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
