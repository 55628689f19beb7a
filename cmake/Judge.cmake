# The grammar of action text as it is defined, by patterns and an engine that the library does without.
add_library(orv_judge OBJECT ${PROJECT_SOURCE_DIR}/tests/judge/expression.cpp
    ${PROJECT_SOURCE_DIR}/tests/judge/patterns.cpp ${PROJECT_SOURCE_DIR}/tests/judge/pattern_reader.cpp
    ${PROJECT_SOURCE_DIR}/tests/judge/compare_readers.cpp ${PROJECT_SOURCE_DIR}/tests/judge/text_maker.cpp)
target_include_directories(orv_judge PRIVATE ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR}
    ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(orv_judge PRIVATE orv_flags orv_boost)
add_dependencies(orv_judge orv_generated)
