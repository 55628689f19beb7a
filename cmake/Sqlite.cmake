# SQLite, for the tool's event database, as the target orv_sqlite. Windows gets one of its own, made once in the build
# tree: there is no package of it for the cross compiler.
add_library(orv_sqlite INTERFACE)
if(WIN32)
    set(sqlite_folder ${PROJECT_BINARY_DIR}/sqlite)
    execute_process(
        COMMAND ${PROJECT_SOURCE_DIR}/scripts/windows-sqlite ${sqlite_folder} ${CMAKE_C_COMPILER} ${CMAKE_AR}
        ERROR_VARIABLE problem RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        string(REPLACE "\n" "\n  " problem "${problem}")
        message(FATAL_ERROR "No SQLite for Windows (ORV_TOOLS=OFF builds without it):\n  ${problem}")
    endif()
    target_include_directories(orv_sqlite SYSTEM INTERFACE ${sqlite_folder})
    target_link_libraries(orv_sqlite INTERFACE ${sqlite_folder}/libsqlite3.a)
else()
    find_package(SQLite3 REQUIRED)
    target_link_libraries(orv_sqlite INTERFACE SQLite::SQLite3)
endif()
