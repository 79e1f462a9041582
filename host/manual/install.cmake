# The manual pages, which a program of the build writes from the commands themselves.
find_program(GZIP gzip)
if(NOT GZIP)
    message(STATUS "Manual pages left out: gzip was not found")
    return()
endif()
add_executable(cephtool_manual ${CMAKE_CURRENT_LIST_DIR}/main.cpp ${CMAKE_CURRENT_LIST_DIR}/manual_page.cpp)
target_link_libraries(cephtool_manual PRIVATE cephtool_parts CLI11::CLI11 tool_flags tool_warnings)
target_compile_definitions(cephtool_manual PRIVATE CEPHTOOL_VERSION="${PROJECT_VERSION}")
set(pages ${CMAKE_CURRENT_BINARY_DIR}/man1)
add_custom_command(OUTPUT ${pages}.written
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${pages}
    COMMAND cephtool_manual ${pages}
    COMMAND ${GZIP} -9nr ${pages}
    COMMAND ${CMAKE_COMMAND} -E touch ${pages}.written
    DEPENDS cephtool_manual VERBATIM COMMENT "Writing the manual pages")
add_custom_target(manual_pages ALL DEPENDS ${pages}.written)
install(DIRECTORY ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR})
