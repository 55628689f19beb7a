# The programs of `make reliability`: they work against the library as it is released. Nothing of it is built unless
# it is asked for.
set(reliability ${PROJECT_SOURCE_DIR}/tests/reliability)
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
target_include_directories(reliability_load PRIVATE ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR})
target_link_libraries(reliability_load PRIVATE orv_flags ${CMAKE_DL_LIBS})
# In front of the tool, which is a program of its own.
add_library(reliability_refuse MODULE EXCLUDE_FROM_ALL ${reliability}/failing_allocator.cpp)
target_link_libraries(reliability_refuse PRIVATE orv_flags)

# Round trips without end.
add_executable(reliability_soak EXCLUDE_FROM_ALL ${reliability}/soak.cpp ${reliability}/sample.cpp)
target_link_libraries(reliability_soak PRIVATE orv_flags OrvActions)

add_custom_target(reliability_programs DEPENDS reliability_allocation reliability_load reliability_refuse
    reliability_soak OrvActions orvact)
