# The command-line tool, its pages and the example programs. They see the public header only, but for lint.cpp and
# catalogue_content.cpp: they read extension files by the library's own rules.
file(GLOB orvact_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/orvact/*.cpp)
if(WIN32)
    list(FILTER orvact_sources EXCLUDE REGEX "_posix\\.cpp$")
else()
    list(FILTER orvact_sources EXCLUDE REGEX "_windows\\.cpp$")
endif()
list(FILTER orvact_sources EXCLUDE REGEX "/main\\.cpp$")
include(Sqlite)
include(Postgres)
include(Utf8proc)
if(ORV_POSTGRES)
    list(FILTER orvact_sources EXCLUDE REGEX "/postgres_absent\\.cpp$")
else()
    list(FILTER orvact_sources EXCLUDE REGEX "/postgres(_rows|_schema|_sender|_store)?\\.cpp$")
endif()

# What orvact --version tells of the build. The commit is missing where the sources have no history.
set(ORV_BUILD "${CMAKE_SYSTEM_NAME} ${CMAKE_SYSTEM_PROCESSOR}, ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}")
string(APPEND ORV_BUILD ", ${CMAKE_BUILD_TYPE}")
execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} rev-parse --short=12 HEAD
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE no_commit)
if(NOT no_commit)
    string(APPEND ORV_BUILD ", commit ${commit}")
endif()
configure_file(${PROJECT_SOURCE_DIR}/tools/orvact/build.h.in ${PROJECT_BINARY_DIR}/orvact/build.h @ONLY)

# The frames, styles and scripts of the pages that it writes.
file(GLOB web_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/orvact/web/*)
set(web_source ${PROJECT_BINARY_DIR}/orvact/web_files.cpp)
add_custom_command(OUTPUT ${web_source}
    COMMAND ${CMAKE_COMMAND} -D OUTPUT=${web_source} "-DFILES=${web_files}" -P ${PROJECT_SOURCE_DIR}/cmake/Embed.cmake
    DEPENDS ${web_files} ${PROJECT_SOURCE_DIR}/cmake/Embed.cmake VERBATIM)
list(APPEND orvact_sources ${web_source})

# All of the tool but its entry, which the program that makes the pages replaces.
add_library(orvact_parts OBJECT ${orvact_sources})
set_source_files_properties(${PROJECT_SOURCE_DIR}/tools/orvact/lint.cpp
    ${PROJECT_SOURCE_DIR}/tools/orvact/catalogue_content.cpp PROPERTIES INCLUDE_DIRECTORIES ${PROJECT_SOURCE_DIR}/src)
target_include_directories(orvact_parts PRIVATE ${PROJECT_BINARY_DIR}/orvact ${PROJECT_SOURCE_DIR}/tools/orvact)
target_link_libraries(orvact_parts PUBLIC orv_flags OrvActions orv_inside orv_CLI orv_nlohmann orv_sqlite orv_postgres
    orv_utf8proc)
if(WIN32)
    target_link_options(orvact_parts PUBLIC -static -municode)
    target_link_libraries(orvact_parts PUBLIC oleaut32 ole32)
endif()

add_executable(orvact ${PROJECT_SOURCE_DIR}/tools/orvact/main.cpp)
target_link_libraries(orvact PRIVATE orvact_parts)
orv_version_resource(orvact "The command-line tool of OrvActions" orvact.exe)

# Manual pages and completions, out of the tool's own table of options.
if(ORV_INSTALL AND NOT CMAKE_CROSSCOMPILING)
    file(GLOB pages_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tools/pages/*.cpp)
    add_executable(orvact_pages ${pages_sources})
    target_include_directories(orvact_pages PRIVATE ${PROJECT_SOURCE_DIR}/tools/orvact)
    target_link_libraries(orvact_pages PRIVATE orvact_parts)
    set(ORV_PAGES ${PROJECT_BINARY_DIR}/pages)
    add_custom_command(OUTPUT ${ORV_PAGES}/stamp
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${ORV_PAGES}
        COMMAND orvact_pages ${ORV_PAGES}
        COMMAND sh -c "gzip -9n ${ORV_PAGES}/man1/*.1"
        COMMAND ${CMAKE_COMMAND} -E touch ${ORV_PAGES}/stamp
        DEPENDS orvact_pages COMMENT "Writing the manual pages" VERBATIM)
    add_custom_target(orv_pages ALL DEPENDS ${ORV_PAGES}/stamp)
endif()

file(GLOB examples CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*.c ${PROJECT_SOURCE_DIR}/examples/*.cpp)
foreach(source ${examples})
    get_filename_component(name ${source} NAME)
    string(REPLACE "." "_" name example_${name})
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE orv_flags OrvActions)
    if(WIN32)
        target_link_options(${name} PRIVATE -static)
        target_link_libraries(${name} PRIVATE oleaut32 ole32)
    endif()
    list(APPEND ORV_EXAMPLES ${name})
endforeach()
