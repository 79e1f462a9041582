# What an installation holds: the library, its headers under include/tool, a CMake package and a pkg-config file. The
# analysis folder, the samples and the program install themselves.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Tool)

install(TARGETS Tool EXPORT ToolTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tool
    FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md")

install(EXPORT ToolTargets NAMESPACE Tool:: DESTINATION ${package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ToolConfig.cmake.in ${PROJECT_BINARY_DIR}/ToolConfig.cmake
    INSTALL_DESTINATION ${package_folder})
# Until 1.0 a minor version may break its users.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ToolConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ToolConfig.cmake ${PROJECT_BINARY_DIR}/ToolConfigVersion.cmake
    DESTINATION ${package_folder})

# The prefix is found from where tool.pc lies, so that an installation can be moved.
file(RELATIVE_PATH prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/tool.pc.in ${PROJECT_BINARY_DIR}/tool.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tool.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
