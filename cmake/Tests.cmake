# Unit tests see the floors from inside; interface tests link the shared library and include the public header only.
# A test file is found by its name, <subject>_test.cpp; nothing is registered by hand.
function(orv_test_program name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE orv_flags gtest_main)
    if(WIN32)
        target_link_options(${name} PRIVATE -static)
        target_link_libraries(${name} PRIVATE ${ORV_SYSTEM_LIBRARIES})
    endif()
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
endfunction()

set(unit_tests)
foreach(floor platform ulmo catalogue objects forms judge match events bridge frame)
    file(GLOB tests CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${floor}/*_test.cpp
        ${PROJECT_SOURCE_DIR}/tests/${floor}/${ORV_PLATFORM}/*_test.cpp)
    list(APPEND unit_tests ${tests})
endforeach()
orv_test_program(orv_unit_tests ${unit_tests} $<TARGET_OBJECTS:orv_objects> $<TARGET_OBJECTS:orv_judge>)
target_include_directories(orv_unit_tests PRIVATE ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR}
    ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/tests/platform/${ORV_PLATFORM})
target_precompile_headers(orv_unit_tests PRIVATE <gtest/gtest.h> <memory> <string> <string_view> <vector>)
add_dependencies(orv_unit_tests orv_generated)
target_link_libraries(orv_unit_tests PRIVATE orv_boost Threads::Threads)

file(GLOB interface_tests CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/exports/*_test.cpp
    ${PROJECT_SOURCE_DIR}/tests/exports/*_test.c)
orv_test_program(orv_interface_tests ${interface_tests}
    ${PROJECT_SOURCE_DIR}/tests/sibling/${ORV_PLATFORM}/foreign_exception.cpp)
target_link_libraries(orv_interface_tests PRIVATE OrvActions)
target_include_directories(orv_interface_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_compile_definitions(orv_interface_tests PRIVATE ORV_GOLDEN_DIR="${PROJECT_SOURCE_DIR}/tests/golden")

# make compare-readers
add_executable(orv_compare_readers EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/tests/judge/compare_readers_main.cpp
    $<TARGET_OBJECTS:orv_objects> $<TARGET_OBJECTS:orv_judge>)
target_include_directories(orv_compare_readers PRIVATE $<TARGET_PROPERTY:orv_unit_tests,INCLUDE_DIRECTORIES>)
target_link_libraries(orv_compare_readers PRIVATE orv_flags Threads::Threads)
add_dependencies(orv_compare_readers orv_generated)

# The bridge to the sibling product with replacements of its library, each in a folder of its own: the program puts the
# one it wants beside itself, and does so in a folder where no other test sees it. What was loaded stays in a process,
# so each suite gets one.
set(sibling_bin ${PROJECT_BINARY_DIR}/bin/sibling)
foreach(variant whole lacking)
    add_library(sibling_${variant} MODULE ${PROJECT_SOURCE_DIR}/tests/sibling/replacement_library.cpp
        ${PROJECT_SOURCE_DIR}/tests/sibling/${ORV_PLATFORM}/foreign_exception.cpp)
    set_target_properties(sibling_${variant} PROPERTIES OUTPUT_NAME HeskActions CXX_VISIBILITY_PRESET default
        LIBRARY_OUTPUT_DIRECTORY ${sibling_bin}/${variant})
    target_link_libraries(sibling_${variant} PRIVATE orv_flags)
    if(WIN32)
        set_target_properties(sibling_${variant} PROPERTIES PREFIX "")
        target_link_options(sibling_${variant} PRIVATE -static)
    endif()
endforeach()
target_compile_definitions(sibling_lacking PRIVATE LACKS_EVENTS)

add_executable(orv_sibling_tests ${PROJECT_SOURCE_DIR}/tests/sibling/wrapper_test.cpp $<TARGET_OBJECTS:orv_objects>)
set_target_properties(orv_sibling_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${sibling_bin})
target_include_directories(orv_sibling_tests PRIVATE
    $<TARGET_PROPERTY:orv_unit_tests,INCLUDE_DIRECTORIES>)
target_link_libraries(orv_sibling_tests PRIVATE orv_flags gtest_main Threads::Threads)
add_dependencies(orv_sibling_tests orv_generated sibling_whole sibling_lacking)
if(WIN32)
    target_link_options(orv_sibling_tests PRIVATE -static)
    target_link_libraries(orv_sibling_tests PRIVATE ${ORV_SYSTEM_LIBRARIES})
endif()
foreach(suite Loading GivingUp Lacking Whole)
    add_test(NAME orv_sibling_tests_${suite} COMMAND orv_sibling_tests --gtest_brief=1 --gtest_filter=${suite}.*)
    set_tests_properties(orv_sibling_tests_${suite} PROPERTIES RESOURCE_LOCK sibling_library)
    if(NOT WIN32)
        set_tests_properties(orv_sibling_tests_${suite} PROPERTIES ENVIRONMENT ORV_DEBUG_OUTPUT=1)
    endif()
endforeach()

# The program that makes the rows of src/ulmo/data/character_classes.txt.
if(WIN32)
    add_executable(make_character_classes ${PROJECT_SOURCE_DIR}/src/ulmo/data/make_character_classes.cpp)
    target_link_libraries(make_character_classes PRIVATE orv_flags orv_boost)
    target_link_options(make_character_classes PRIVATE -static)
endif()

function(orv_python_test name)
    add_test(NAME ${name} COMMAND ${Python3_EXECUTABLE} ${ARGN} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        ${orv_configurations})
    set(environment
        PYTHONDONTWRITEBYTECODE=1
        ORVACT_RUNNER=${CMAKE_CROSSCOMPILING_EMULATOR}
        ORV_BIN=${PROJECT_BINARY_DIR}/bin
        ORVACT=${PROJECT_BINARY_DIR}/bin/orvact${CMAKE_EXECUTABLE_SUFFIX}
        ORV_LIBRARY=$<TARGET_FILE:OrvActions>
        ORV_GENERATED=${PROJECT_BINARY_DIR}/generated
        ORV_OBJDUMP=${CMAKE_OBJDUMP}
        ORV_NM=${CMAKE_NM})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${environment}")
endfunction()

if(NOT CMAKE_CROSSCOMPILING)
    orv_python_test(generator -m unittest discover -s tests/generate)
endif()
orv_python_test(exported_symbols tests/exports/test_exported_symbols.py)
orv_python_test(interface_tables tests/exports/test_interface_tables.py)
if(ORV_TOOLS)
    orv_python_test(orvact -m unittest discover -s tests/orvact)
endif()

# The bindings. One table for all languages; those of C and C++ run wherever the library does, and with them a compiler
# confirms the layout that the generator hands to the other languages.
set(ORV_CONFORMANCE ${PROJECT_SOURCE_DIR}/bindings/conformance/cases.txt
    ${ORV_GENERATED_DIR}/bindings/conformance/catalogue.txt)
set(layout ${ORV_GENERATED_DIR}/bindings/conformance/layout.c)
set_source_files_properties(${layout} PROPERTIES GENERATED TRUE)
add_executable(conformance_c ${PROJECT_SOURCE_DIR}/tests/bindings/native/conformance.c ${layout})
add_executable(conformance_cpp ${PROJECT_SOURCE_DIR}/tests/bindings/native/conformance_wrapper.cpp)
target_link_libraries(conformance_c PRIVATE orv_flags OrvActions)
target_link_libraries(conformance_cpp PRIVATE orv_flags OrvActions::Cpp)
foreach(language c cpp)
    add_dependencies(conformance_${language} orv_generated)
    if(WIN32)
        target_link_options(conformance_${language} PRIVATE -static)
    endif()
    add_test(NAME conformance_${language} COMMAND conformance_${language} ${ORV_CONFORMANCE})
endforeach()

# Under the sanitizers an interpreter would have to be built with them. `make test-bindings` runs those of the languages
# whose compilers it has installed, by ctest -C bindings.
if(NOT CMAKE_CROSSCOMPILING AND NOT ORV_SANITIZE)
    orv_python_test(bindings_python -m unittest discover -s tests/bindings/python -t tests/bindings/python)
    set(orv_configurations CONFIGURATIONS bindings)
    orv_python_test(bindings_compiled tests/bindings/test_compiled.py)
    unset(orv_configurations)
    list(JOIN ORV_CONFORMANCE : tables)
    set_property(TEST bindings_python bindings_compiled APPEND PROPERTY ENVIRONMENT ORV_CONFORMANCE=${tables}
        PYTHONPATH=${PROJECT_BINARY_DIR}/python ORVACTIONS_LIBRARY=$<TARGET_FILE:OrvActions>)
endif()

# A host that links nothing of ours.
add_executable(plain_host ${PROJECT_SOURCE_DIR}/tests/host/plain_host.c)
target_include_directories(plain_host PRIVATE ${PROJECT_SOURCE_DIR}/include ${ORV_GENERATED_INCLUDE_DIR})
target_link_libraries(plain_host PRIVATE ${CMAKE_DL_LIBS})
add_dependencies(plain_host orv_generated OrvActions)
add_test(NAME plain_host COMMAND plain_host $<TARGET_FILE:OrvActions>)

# A host that crashes, which the sanitizers would catch.
if(NOT ORV_SANITIZE)
    add_executable(crashing_host ${PROJECT_SOURCE_DIR}/tests/crash/crashing_host.c)
    target_link_libraries(crashing_host PRIVATE ${CMAKE_DL_LIBS})
    orv_python_test(crash tests/crash/test_crash.py)
endif()

# A host that is copied into folders of its own, with extension files beside it.
add_executable(extension_host ${PROJECT_SOURCE_DIR}/tests/host/extension_host.cpp)
target_link_libraries(extension_host PRIVATE orv_flags OrvActions)
if(WIN32)
    target_link_options(extension_host PRIVATE -static)
endif()
if(ORV_TOOLS)
    orv_python_test(extensions tests/host/test_extensions.py)
endif()

# What a user does with the packages; `make test-package` makes them before it runs these, by ctest -C package.
if(ORV_INSTALL AND ORV_TOOLS AND NOT CMAKE_CROSSCOMPILING)
    set(orv_configurations CONFIGURATIONS package)
    foreach(subject headers pages linux windows reproducible)
        orv_python_test(package_${subject} tests/package/test_${subject}.py)
        set_tests_properties(package_${subject} PROPERTIES LABELS package)
    endforeach()
endif()
