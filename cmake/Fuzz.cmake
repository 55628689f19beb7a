# Fuzz targets for libFuzzer: fuzz/<subject>_fuzz.cpp, each with its seeds from fuzz/make_<subject>_seeds.cpp.
if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
    message(FATAL_ERROR "The fuzz targets need Clang: use the preset fuzz.")
endif()
# Clang gives a shared library no sanitizer run-time, so it would not link; the targets take the objects.
set_target_properties(OrvActions PROPERTIES EXCLUDE_FROM_ALL ON)
# The objects are instrumented as well: coverage leads the fuzzer.
target_compile_options(orv_objects PRIVATE -fsanitize=fuzzer-no-link)

function(orv_inside_program name source)
    add_executable(${name} ${source} $<TARGET_OBJECTS:orv_objects>)
    add_dependencies(${name} orv_generated)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR}
        ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PRIVATE orv_flags Threads::Threads)
endfunction()

file(GLOB targets CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp)
foreach(source ${targets})
    get_filename_component(name ${source} NAME_WE)
    orv_inside_program(${name} ${source})
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endforeach()
# Targets whose input has a form that mutations can keep.
foreach(name text_reader binary_roundtrip compare_readers sibling_from_orv sibling_to_orv)
    target_sources(${name}_fuzz PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/text_mutator.cpp)
endforeach()
target_sources(binary_reader_fuzz PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/binary_mutator.cpp)
file(GLOB seeds CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/make_*_seeds.cpp)
foreach(source ${seeds})
    get_filename_component(name ${source} NAME_WE)
    orv_inside_program(${name} ${source})
endforeach()
foreach(name compare_readers_fuzz make_compare_seeds)
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:orv_judge>)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endforeach()
target_compile_options(orv_judge PRIVATE -fsanitize=fuzzer-no-link)
