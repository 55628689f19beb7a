# The programs of `make reliability`: they work against the library as it is released. Nothing of it is built unless
# it is asked for.
set(reliability ${PROJECT_SOURCE_DIR}/tests/reliability)

if(WIN32)
    add_executable(reliability_load_unload EXCLUDE_FROM_ALL ${reliability}/load_unload.c)
    target_link_libraries(reliability_load_unload PRIVATE orv_flags)
    return()
endif()

# A program that holds the library's objects.
function(reliability_inside name)
    add_executable(${name} EXCLUDE_FROM_ALL ${ARGN} $<TARGET_OBJECTS:orv_objects>)
    add_dependencies(${name} orv_generated)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR}
        ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PRIVATE orv_flags Threads::Threads)
endfunction()

if(ORV_SANITIZE STREQUAL thread)
    reliability_inside(reliability_threads ${reliability}/thread_stress.cpp ${reliability}/sample.cpp)
    return()
elseif(ORV_SANITIZE)
    # The fuzz targets and the makers of their seeds, all in one program under names of their own. The comparison of
    # the readers is a target for libFuzzer alone: it finds differences, not faults of memory.
    file(GLOB targets CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp)
    list(FILTER targets EXCLUDE REGEX compare_readers)
    set(hostile_sources ${targets})
    set(hostile_list "")
    foreach(source ${targets})
        get_filename_component(name ${source} NAME_WE)
        string(REGEX REPLACE "_fuzz$" "" name ${name})
        string(REGEX REPLACE "_.*" "" maker ${name})
        set_source_files_properties(${source} PROPERTIES COMPILE_DEFINITIONS LLVMFuzzerTestOneInput=Fuzz_${name})
        set_source_files_properties(${PROJECT_SOURCE_DIR}/fuzz/make_${maker}_seeds.cpp PROPERTIES
            COMPILE_DEFINITIONS main=Make_${maker})
        list(APPEND hostile_sources ${PROJECT_SOURCE_DIR}/fuzz/make_${maker}_seeds.cpp)
        string(APPEND hostile_list "TARGET(${name}, ${maker})\n")
    endforeach()
    list(REMOVE_DUPLICATES hostile_sources)
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/reliability/hostile_targets.inc CONTENT "${hostile_list}")
    reliability_inside(reliability_hostile ${hostile_sources} ${reliability}/hostile_input.cpp
        ${reliability}/make_kind_seeds.cpp)
    target_include_directories(reliability_hostile PRIVATE ${PROJECT_BINARY_DIR}/generated/reliability)
    return()
endif()

set(operations_dir ${PROJECT_BINARY_DIR}/generated/reliability)
set(operations)
foreach(shard RANGE 1 4)
    list(APPEND operations ${operations_dir}/operations_${shard}.cpp)
endforeach()
add_custom_command(OUTPUT ${operations}
    COMMAND ${Python3_EXECUTABLE} -B ${reliability}/list_operations.py --exports ${ORV_VERSION_SCRIPT}
        --include ${PROJECT_SOURCE_DIR}/include --include ${ORV_GENERATED_INCLUDE_DIR} --out ${operations_dir}
    DEPENDS ${reliability}/list_operations.py ${ORV_GENERATED_DIR}/stamp
    COMMENT "Listing the operations of the library" VERBATIM)

# Every operation, with memory that runs out.
add_executable(reliability_allocation EXCLUDE_FROM_ALL ${operations} ${reliability}/allocation_failure.cpp
    ${reliability}/failing_allocator.cpp ${reliability}/operation.cpp ${reliability}/sample.cpp)
target_include_directories(reliability_allocation PRIVATE ${reliability})
target_compile_options(reliability_allocation PRIVATE -O0)
target_link_libraries(reliability_allocation PRIVATE orv_flags OrvActions)
# The loading of the library, likewise.
add_executable(reliability_load EXCLUDE_FROM_ALL ${reliability}/load_failure.cpp ${reliability}/failing_allocator.cpp)
add_dependencies(reliability_load orv_generated)
target_include_directories(reliability_load PRIVATE ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR})
target_link_libraries(reliability_load PRIVATE orv_flags ${CMAKE_DL_LIBS})
# Values that the functions of the library do not hand out.
reliability_inside(reliability_values ${reliability}/value_failure.cpp ${reliability}/failing_allocator.cpp)
target_link_libraries(reliability_values PRIVATE orv_boost)
# Preloaded into the tool, which is a program of its own.
add_library(reliability_refuse MODULE EXCLUDE_FROM_ALL ${reliability}/failing_allocator.cpp
    ${reliability}/refuse_in_main.cpp)
target_link_libraries(reliability_refuse PRIVATE orv_flags ${CMAKE_DL_LIBS})

# Round trips without end.
add_executable(reliability_soak EXCLUDE_FROM_ALL ${reliability}/soak.cpp ${reliability}/sample.cpp)
target_link_libraries(reliability_soak PRIVATE orv_flags OrvActions)

# Texts made to hurt.
add_executable(reliability_texts EXCLUDE_FROM_ALL ${reliability}/hostile_texts.cpp)
target_link_libraries(reliability_texts PRIVATE orv_flags OrvActions)

if(ORV_TOOLS)
    add_custom_target(reliability_programs DEPENDS reliability_allocation reliability_load reliability_refuse
        reliability_values reliability_soak reliability_texts sibling_whole OrvActions orvact)
endif()
