# Benchmarks: what a host pays, through the shared library as it is released.
find_package(benchmark REQUIRED)
file(GLOB bench_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/*.cpp)
add_executable(orv_bench ${bench_sources})
target_include_directories(orv_bench PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(orv_bench PRIVATE orv_flags OrvActions orv_inside benchmark::benchmark_main)

add_executable(orv_load_time ${PROJECT_SOURCE_DIR}/bench/load_time.c)
target_link_libraries(orv_load_time PRIVATE orv_flags ${CMAKE_DL_LIBS})
