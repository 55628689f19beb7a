# The library: all floors once as objects, linked into the shared library and into the tests that see it from inside.
set(ORV_FLOORS platform ulmo catalogue objects forms match events bridge exports)
set(orv_sources)
foreach(floor ${ORV_FLOORS})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${floor}/*.cpp)
    list(APPEND orv_sources ${sources})
endforeach()
if(WIN32)
    set(ORV_PLATFORM windows)
else()
    set(ORV_PLATFORM posix)
endif()
file(GLOB platform_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/platform/${ORV_PLATFORM}/*.cpp)

add_library(orv_objects OBJECT ${orv_sources} ${platform_sources} ${ORV_GENERATED_SOURCES})
add_dependencies(orv_objects orv_generated)
target_include_directories(orv_objects
    PUBLIC ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR} ${PROJECT_SOURCE_DIR}/src
    PRIVATE ${ORV_GENERATED_SOURCE_DIR})
target_link_libraries(orv_objects PRIVATE orv_flags PUBLIC Threads::Threads)
# An export is found by the declaration of a public header; a name that none declares would be a function of C++.
file(GLOB export_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/exports/*.cpp)
set_source_files_properties(${export_sources} PROPERTIES COMPILE_OPTIONS -Wmissing-declarations)
target_precompile_headers(orv_objects PRIVATE
    <cstdint> <cstring> <map> <memory> <optional> <span> <string> <string_view> <vector>)

# For programs of ours that need floors that the library does not export: the linker only takes out of the archive what
# they call, so the exported functions are not in them a second time.
add_library(orv_inside STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:orv_objects>)
target_link_libraries(orv_inside PUBLIC Threads::Threads)

add_library(OrvActions SHARED $<TARGET_OBJECTS:orv_objects>)
add_library(OrvActions::OrvActions ALIAS OrvActions)
target_include_directories(OrvActions INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${ORV_GENERATED_INCLUDE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
add_dependencies(OrvActions orv_generated)
target_link_libraries(OrvActions PRIVATE $<BUILD_INTERFACE:orv_flags>)
set_target_properties(OrvActions PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})

set(ORV_SYSTEM_LIBRARIES)
if(WIN32)
    set(ORV_SYSTEM_LIBRARIES ole32 oleaut32)
    set_target_properties(OrvActions PROPERTIES PREFIX "" VERSION "" SOVERSION "")
    target_sources(OrvActions PRIVATE ${ORV_DEF_FILE})
    # The run-time goes into the library: a host may be built by another compiler.
    target_link_options(OrvActions PRIVATE -static)
    orv_version_resource(OrvActions "${PROJECT_DESCRIPTION}" OrvActions.dll)
    target_link_libraries(OrvActions PRIVATE ${ORV_SYSTEM_LIBRARIES})
else()
    target_link_options(OrvActions PRIVATE -Wl,--version-script=${ORV_VERSION_SCRIPT} -Wl,-z,defs -Wl,-O1
        -Wl,-z,nodelete)  # see src/platform/posix/entry_point.cpp
    set_target_properties(OrvActions PROPERTIES LINK_DEPENDS ${ORV_VERSION_SCRIPT})
    target_link_libraries(OrvActions PRIVATE Threads::Threads)
endif()

# The wrapper is a header; on Windows it needs the system strings of oleaut32.
add_library(orv_cpp INTERFACE)
add_library(OrvActions::Cpp ALIAS orv_cpp)
target_compile_features(orv_cpp INTERFACE cxx_std_17)
target_link_libraries(orv_cpp INTERFACE OrvActions $<$<PLATFORM_ID:Windows>:oleaut32>)
