# Runs the generator: the catalogue's data, the list of exports, the classes of characters and the public headers become
# sources, headers, linker files, pages and bindings in the build tree. Defines
#
#   ORV_GENERATED_SOURCES       the .cpp files to compile into the library
#   ORV_GENERATED_INCLUDE_DIR   holds OrvActions/OrvEnums.h
#   ORV_GENERATED_SOURCE_DIR    private include folder of the generated sources
#   ORV_VERSION_SCRIPT          for the GNU linker
#   ORV_DEF_FILE                for Windows
#   orv_generated               the target that brings all of them up to date
#
# Every target that compiles or includes a generated file must depend on orv_generated (add_dependencies).

find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

set(ORV_GENERATED_DIR "${PROJECT_BINARY_DIR}/generated")
set(ORV_GENERATOR_COMMAND
    "${Python3_EXECUTABLE}" -B "${PROJECT_SOURCE_DIR}/tools/generate/generate.py"
    --data "${PROJECT_SOURCE_DIR}/src/catalogue/data"
    --exports "${PROJECT_SOURCE_DIR}/src/exports/exports.list"
    --character-classes "${PROJECT_SOURCE_DIR}/src/ulmo/data/character_classes.txt"
    --headers "${PROJECT_SOURCE_DIR}/include")

file(GLOB ORV_GENERATOR_INPUTS CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/src/catalogue/data/*.toml"
    "${PROJECT_SOURCE_DIR}/src/catalogue/data/actions/*.toml"
    "${PROJECT_SOURCE_DIR}/bindings/*/*.in"
    "${PROJECT_SOURCE_DIR}/include/*.h"
    "${PROJECT_SOURCE_DIR}/include/OrvActions/*.h"
    "${PROJECT_SOURCE_DIR}/tools/generate/*.py"
    "${PROJECT_SOURCE_DIR}/tools/generate/orvgen/*.py")
list(APPEND ORV_GENERATOR_INPUTS "${PROJECT_SOURCE_DIR}/src/exports/exports.list"
    "${PROJECT_SOURCE_DIR}/src/ulmo/data/character_classes.txt")

execute_process(
    COMMAND ${ORV_GENERATOR_COMMAND} --list-outputs
    OUTPUT_VARIABLE orv_outputs OUTPUT_STRIP_TRAILING_WHITESPACE
    ERROR_VARIABLE orv_problems RESULT_VARIABLE orv_result)
if(NOT orv_result EQUAL 0)
    # Without this a build tree would not notice that the data has been corrected.
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ORV_GENERATOR_INPUTS})
    # Indented, because CMake breaks the lines of running text.
    string(REPLACE "\n" "\n  " orv_problems "${orv_problems}")
    message(FATAL_ERROR "The data is not sound:\n  ${orv_problems}")
endif()
string(REPLACE "\n" ";" orv_outputs "${orv_outputs}")
list(TRANSFORM orv_outputs PREPEND "${ORV_GENERATED_DIR}/")

set(ORV_GENERATED_SOURCES ${orv_outputs})
list(FILTER ORV_GENERATED_SOURCES INCLUDE REGEX "\\.cpp$")
set(ORV_GENERATED_INCLUDE_DIR "${ORV_GENERATED_DIR}/include")
set(ORV_GENERATED_SOURCE_DIR "${ORV_GENERATED_DIR}/src")
set(ORV_VERSION_SCRIPT "${ORV_GENERATED_DIR}/exports/orvactions.map")
set(ORV_DEF_FILE "${ORV_GENERATED_DIR}/exports/orvactions.def")

# The stamp is what make and ninja compare; the files themselves keep their time while their content stays.
add_custom_command(
    OUTPUT "${ORV_GENERATED_DIR}/stamp"
    BYPRODUCTS ${orv_outputs}
    COMMAND ${ORV_GENERATOR_COMMAND} --out "${ORV_GENERATED_DIR}"
    COMMAND "${CMAKE_COMMAND}" -E touch "${ORV_GENERATED_DIR}/stamp"
    DEPENDS ${ORV_GENERATOR_INPUTS}
    COMMENT "Generating the catalogue"
    VERBATIM)
add_custom_target(orv_generated DEPENDS "${ORV_GENERATED_DIR}/stamp")
