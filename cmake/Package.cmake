# The packages, by CPack: `cpack --config build/native/CPackConfig.cmake` makes the .deb files and the .tar.gz, that of
# the Windows build the .zip.
set(CPACK_PACKAGE_NAME OrvActions)
set(CPACK_PACKAGE_VENDOR "OrvActions maintainers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "action library of a video-management platform")
set(CPACK_PACKAGE_CONTACT "OrvActions maintainers <maintainers@orvactions.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime development tool symbols)
set(CPACK_THREADS 0)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_SYSTEM_NAME windows-x86_64)
else()
    set(CPACK_GENERATOR "DEB;TGZ")
    string(TOLOWER ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR} CPACK_SYSTEM_NAME)
endif()
set(CPACK_PACKAGE_FILE_NAME OrvActions-${PROJECT_VERSION}-${CPACK_SYSTEM_NAME})

# The time of everything inside: that of the commit, so that two builds of it are the same.
set(ORV_SOURCE_TIME "$ENV{SOURCE_DATE_EPOCH}")
if(NOT ORV_SOURCE_TIME)
    execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} log -1 --format=%ct
        OUTPUT_VARIABLE ORV_SOURCE_TIME OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT ORV_SOURCE_TIME)
    file(TIMESTAMP ${PROJECT_SOURCE_DIR}/CHANGELOG.md ORV_SOURCE_TIME %s UTC)
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
configure_file(${PROJECT_SOURCE_DIR}/packaging/for_generator.cmake.in ${PROJECT_BINARY_DIR}/for_generator.cmake @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/packaging/before_packing.cmake.in ${PROJECT_BINARY_DIR}/before_packing.cmake @ONLY)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_BINARY_DIR}/for_generator.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/before_packing.cmake)

# Archives: one with everything, one with the symbols.
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_ARCHIVE_MAIN_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME ${CPACK_PACKAGE_FILE_NAME}-symbols)

# Debian: the usual three, and the symbols of both binaries.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(library liborvactions${PROJECT_VERSION_MAJOR})

function(orv_debian_package component name section description depends)
    string(TOUPPER ${component} key)
    foreach(setting "NAME;${name}" "SECTION;${section}" "DEPENDS;${depends}")
        list(POP_FRONT setting word)
        set(CPACK_DEBIAN_${key}_PACKAGE_${word} "${setting}" PARENT_SCOPE)
    endforeach()
    set(CPACK_DEBIAN_${key}_DESCRIPTION "${description}" PARENT_SCOPE)
endfunction()

set(about "An action is a typed, named message with typed parameters. The library creates,
inspects, compares, stores, restores and describes actions.")
orv_debian_package(runtime ${library} libs "${about}" "")
orv_debian_package(development liborvactions-dev libdevel "${about}
This package holds headers, linker's files, examples and documentation." "${library} (= ${debian_version})")
orv_debian_package(tool orvact utils "${about}
This package holds the command-line tool: it shows, converts, matches and stores
actions." "${library} (= ${debian_version})")
orv_debian_package(symbols orvactions-dbgsym debug "${about}
This package holds the symbols of the library and of the tool." "${library} (= ${debian_version})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/bin)
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
file(WRITE ${PROJECT_BINARY_DIR}/debian/shlibs
    "libOrvActions ${PROJECT_VERSION_MAJOR} ${library} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    "${PROJECT_BINARY_DIR}/debian/triggers;${PROJECT_BINARY_DIR}/debian/shlibs")

include(CPack)
