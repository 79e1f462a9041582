# What an installation holds: library, surfaces, films, their headers under include/tool, CMake package and pkg-config files. The
# analysis folder, the samples and the program install themselves.
include(CMakePackageConfigHelpers)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Tool)

install(TARGETS Tool EXPORT ToolTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tool
    FILES_MATCHING PATTERN "*.h")
# The surfaces, and of their headers those that a host includes.
install(TARGETS tool_surface EXPORT ToolSurfaceTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
set(surface_headers drawn_surface figure pen_stroke recording_surface svg_surface typeface whole_file)
get_target_property(surface_modules tool_surface TOOL_SURFACE_MODULES)
if(surface_modules)
    list(APPEND surface_headers background font_failure pdf_surface picture_surface)
endif()
list(TRANSFORM surface_headers REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/surface/\\1.h")
install(FILES ${surface_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tool/surface)
# The films likewise.
install(TARGETS tool_film EXPORT ToolFilmTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
get_target_property(film_modules tool_film TOOL_FILM_MODULES)
get_target_property(film_libraries tool_film TOOL_FILM_LIBRARIES)
install(FILES ${PROJECT_SOURCE_DIR}/film/film.h ${PROJECT_SOURCE_DIR}/film/film_header.h ${PROJECT_SOURCE_DIR}/film/film_scale.h
    ${PROJECT_SOURCE_DIR}/film/window.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tool/film)
# The documents, each where the links of the others lead.
set(documents ${CMAKE_INSTALL_DATADIR}/doc/cephtool)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${documents} COMPONENT program
    FILES_MATCHING PATTERN "*.md" PATTERN "pictures/*.png" PATTERN "pictures/*.svg" PATTERN "site" EXCLUDE)
foreach(page README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md anaitem/SOURCES.md cmake/windows/code_page_932.manifest
        examples/samples/README.md examples/windows-host/main.cpp film/README.md outlines/README.md surface/README.md web/README.md
        web/page/README.md web/page/film/README.md web/page/store/README.md)
    get_filename_component(folder ${page} DIRECTORY)
    install(FILES ${PROJECT_SOURCE_DIR}/${page} DESTINATION ${documents}/${folder} COMPONENT program)
endforeach()

install(EXPORT ToolTargets NAMESPACE Tool:: DESTINATION ${package_folder})
install(EXPORT ToolSurfaceTargets NAMESPACE Tool:: DESTINATION ${package_folder})
install(EXPORT ToolFilmTargets NAMESPACE Tool:: DESTINATION ${package_folder})
get_property(rooms GLOBAL PROPERTY TOOL_ROOMS)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ToolConfig.cmake.in ${PROJECT_BINARY_DIR}/ToolConfig.cmake
    INSTALL_DESTINATION ${package_folder})
set(compatibility SameMajorVersion)
if(tool_interface MATCHES "[.]")
    set(compatibility SameMinorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ToolConfigVersion.cmake COMPATIBILITY ${compatibility})
install(FILES ${PROJECT_BINARY_DIR}/ToolConfig.cmake ${PROJECT_BINARY_DIR}/ToolConfigVersion.cmake
    DESTINATION ${package_folder})

# The prefix is found from where tool.pc lies, so that an installation can be moved.
file(RELATIVE_PATH prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
list(JOIN surface_modules ", " surface_requires)
string(REPLACE ">=" " >= " surface_requires "${surface_requires}")
list(TRANSFORM film_modules REPLACE ".*[|]" "" OUTPUT_VARIABLE film_requires)
list(JOIN film_requires ", " film_requires)
string(REPLACE ">=" " >= " film_requires "${film_requires}")
list(TRANSFORM film_libraries PREPEND "-l" OUTPUT_VARIABLE film_links)
list(JOIN film_links " " film_links)
# The rooms above the library, which install themselves.
foreach(entry IN LISTS rooms)
    string(REGEX MATCH "^(.*)[|](.*)$" entry "${entry}")
    set(room ${CMAKE_MATCH_1})
    set(room_requires "")
    string(REPLACE "," ";" needs "${CMAKE_MATCH_2}")
    foreach(need IN LISTS needs)
        string(APPEND room_requires ", tool-${need} = ${PROJECT_VERSION}")
    endforeach()
    configure_file(${PROJECT_SOURCE_DIR}/cmake/tool-room.pc.in ${PROJECT_BINARY_DIR}/tool-${room}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/tool-${room}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
foreach(module tool tool-film tool-surface)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${module}.pc.in ${PROJECT_BINARY_DIR}/${module}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${module}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
