# Run by cpack when all that goes into packages lies in CPACK_TEMPORARY_DIRECTORY, each in a folder of its own unless there is but
# one: tells there what it is made of.
function(tell stage name to)
    execute_process(COMMAND ${CPACK_TOOL_PYTHON} ${CPACK_TOOL_MAKE_SBOM} --build ${CPACK_TOOL_BUILD} --stage ${stage} --name ${name}
        --version ${CPACK_PACKAGE_VERSION} --to ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

if(CPACK_MONOLITHIC_INSTALL)
    tell(${CPACK_TEMPORARY_DIRECTORY} ${CPACK_PACKAGE_FILE_NAME} .)
else()
    foreach(component IN LISTS CPACK_COMPONENTS_ALL)
        string(TOUPPER ${component} upper)
        set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
        tell(${CPACK_TEMPORARY_DIRECTORY}/${component} ${package} usr/share/doc/${package})
    endforeach()
endif()
