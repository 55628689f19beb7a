# What is installed, in four components: runtime (the library), development (headers, linker's files, documentation),
# tool (orvact) and symbols. All of it works wherever it lies: nothing names the prefix.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
string(TOUPPER "${CMAKE_BUILD_TYPE}" ORV_CONFIGURATION)
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/OrvActions)
set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/OrvActions)

# Release builds are stripped. The symbols are found by the build's identifier on Linux, by name on Windows.
set(strip_option --strip-unneeded)
if(WIN32)
    set(strip_option --strip-all)  # the other one leaves the imports' names
endif()
configure_file(${PROJECT_SOURCE_DIR}/packaging/split_symbols.cmake.in ${PROJECT_BINARY_DIR}/split_symbols.cmake @ONLY)
function(orv_install_stripped target component folder)
    if(NOT ORV_CONFIGURATION MATCHES "^(RELEASE|RELWITHDEBINFO)$" OR NOT CMAKE_OBJCOPY OR NOT CMAKE_STRIP)
        return()
    endif()
    set(arguments "\"$<TARGET_FILE:${target}>\" ${folder}/$<TARGET_FILE_NAME:${target}>")
    set(script "include(\"${PROJECT_BINARY_DIR}/split_symbols.cmake\")\n")
    install(CODE "${script}orv_strip(${arguments})" COMPONENT ${component})
    install(CODE "${script}orv_symbols(${arguments})" COMPONENT symbols EXCLUDE_FROM_ALL)
endfunction()

install(TARGETS OrvActions EXPORT OrvActionsTargets
    RUNTIME COMPONENT runtime
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(WIN32)
    orv_install_stripped(OrvActions runtime ${CMAKE_INSTALL_BINDIR})
else()
    orv_install_stripped(OrvActions runtime ${CMAKE_INSTALL_LIBDIR})
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ ${ORV_GENERATED_INCLUDE_DIR}/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")

# Other builds: CMake packages and pkg-config.
include(CMakePackageConfigHelpers)
set_target_properties(orv_cpp PROPERTIES EXPORT_NAME Cpp)
install(TARGETS orv_cpp EXPORT OrvActionsTargets)
install(EXPORT OrvActionsTargets NAMESPACE OrvActions:: DESTINATION ${config_dir} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/packaging/OrvActionsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/OrvActionsConfig.cmake INSTALL_DESTINATION ${config_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrvActionsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrvActionsConfig.cmake ${PROJECT_BINARY_DIR}/OrvActionsConfigVersion.cmake
    DESTINATION ${config_dir} COMPONENT development)
file(RELATIVE_PATH ORV_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" ORV_PREFIX_FROM_PC ${ORV_PREFIX_FROM_PC})
list(TRANSFORM ORV_SYSTEM_LIBRARIES PREPEND " -l" OUTPUT_VARIABLE ORV_PC_SYSTEM_LIBRARIES)
list(JOIN ORV_PC_SYSTEM_LIBRARIES "" ORV_PC_SYSTEM_LIBRARIES)
configure_file(${PROJECT_SOURCE_DIR}/packaging/OrvActions.pc.in ${PROJECT_BINARY_DIR}/OrvActions.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/OrvActions.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# Microsoft's linker: the list of exports, and an import library in its own format, which GNU tools do not write.
if(WIN32)
    install(FILES ${ORV_DEF_FILE} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development RENAME OrvActions.def)
    find_program(ORV_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-16 llvm-dlltool-14)
    if(ORV_LLVM_DLLTOOL)
        add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/OrvActions.lib
            COMMAND ${ORV_LLVM_DLLTOOL} -m i386:x86-64 -d ${ORV_DEF_FILE} -l ${PROJECT_BINARY_DIR}/OrvActions.lib
            DEPENDS orv_generated ${ORV_DEF_FILE} VERBATIM)
        add_custom_target(orv_import_library ALL DEPENDS ${PROJECT_BINARY_DIR}/OrvActions.lib)
        install(FILES ${PROJECT_BINARY_DIR}/OrvActions.lib DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    endif()
endif()

install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${doc_dir} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/examples ${ORV_GENERATED_DIR}/docs/reference
    DESTINATION ${doc_dir} COMPONENT development)

if(ORV_TOOLS)
    # A build tree has the library beside the tool, so the length of its path does not show in the tool.
    set_target_properties(orvact PROPERTIES BUILD_RPATH_USE_ORIGIN ON
        INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS orvact RUNTIME COMPONENT tool)
    orv_install_stripped(orvact tool ${CMAKE_INSTALL_BINDIR})
    if(ORV_PAGES)
        install(DIRECTORY ${ORV_PAGES}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT tool)
        set(completions ${ORV_PAGES}/completions)
        install(FILES ${completions}/orvact COMPONENT tool
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
        install(FILES ${completions}/_orvact COMPONENT tool
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
        install(FILES ${completions}/orvact.fish COMPONENT tool
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
    endif()
endif()
