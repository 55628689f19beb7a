# The bindings of other languages: the hand-written part and what the generator makes of headers and catalogue, put
# together in the build tree.
set(ORV_BINDINGS ${PROJECT_SOURCE_DIR}/bindings)
set(ORV_GENERATED_BINDINGS ${ORV_GENERATED_DIR}/bindings)

# A folder in which the package can be imported; the library is named by ORVACTIONS_LIBRARY until a wheel holds it.
set(ORV_PYTHON_PACKAGE ${PROJECT_BINARY_DIR}/python/orvactions)
file(GLOB python_sources CONFIGURE_DEPENDS ${ORV_BINDINGS}/python/orvactions/*)
add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/python/stamp
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${ORV_PYTHON_PACKAGE}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ORV_PYTHON_PACKAGE}
    COMMAND ${CMAKE_COMMAND} -E copy ${python_sources} ${ORV_PYTHON_PACKAGE}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${ORV_GENERATED_BINDINGS}/python/orvactions ${ORV_PYTHON_PACKAGE}
    COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/python/stamp
    DEPENDS ${python_sources} ${ORV_GENERATED_DIR}/stamp
    COMMENT "Putting the Python package together" VERBATIM)
add_custom_target(orv_python ALL DEPENDS ${PROJECT_BINARY_DIR}/python/stamp)
add_dependencies(orv_python orv_generated)
