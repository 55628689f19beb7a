# SQLite, for the tool's event database, as the target orv_sqlite. For Windows it is built once in the build
# tree, unless the cross compiler has it: Debian has no package.

# Makes a library for Windows out of the system's source package, in the folder of its name in the build tree.
function(orv_windows_library name)
    execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/windows-library ${name} ${PROJECT_BINARY_DIR}/${name}
            ${CMAKE_C_COMPILER} ${CMAKE_AR}
        ERROR_VARIABLE problem RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(REPLACE "\n" "\n  " problem "${problem}")
        message(FATAL_ERROR "No ${name} for Windows (ORV_TOOLS=OFF builds without it):\n  ${problem}")
    endif()
endfunction()

add_library(orv_sqlite INTERFACE)
if(WIN32)
    find_library(ORV_SQLITE_LIBRARY NAMES libsqlite3.a)
    find_path(ORV_SQLITE_INCLUDE sqlite3.h)
    if(NOT ORV_SQLITE_LIBRARY OR NOT ORV_SQLITE_INCLUDE)
        orv_windows_library(sqlite3)
        set(ORV_SQLITE_LIBRARY ${PROJECT_BINARY_DIR}/sqlite3/libsqlite3.a)
        set(ORV_SQLITE_INCLUDE ${PROJECT_BINARY_DIR}/sqlite3)
    endif()
    target_include_directories(orv_sqlite SYSTEM INTERFACE ${ORV_SQLITE_INCLUDE})
    target_link_libraries(orv_sqlite INTERFACE ${ORV_SQLITE_LIBRARY})
else()
    find_package(SQLite3 REQUIRED)
    target_link_libraries(orv_sqlite INTERFACE SQLite::SQLite3)
endif()
