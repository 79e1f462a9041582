# Read by cpack once for each kind of package. Archives hold one component, or all; only such have all that lies in the folder
# when they are made, and so the list of what they are made of.
if(CPACK_GENERATOR STREQUAL ZIP)
    set(CPACK_PACKAGING_INSTALL_PREFIX "/")
    set(CPACK_MONOLITHIC_INSTALL ON)
    if(CPACK_TOOL_PAGE)
        set(CPACK_PACKAGE_FILE_NAME ${CPACK_TOOL_PAGE})
        set(CPACK_COMPONENTS_ALL)
        set(CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_TOOL_BUILD};Tool;page;/")
    endif()
endif()
