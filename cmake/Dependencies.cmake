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
