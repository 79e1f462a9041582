# A room above the library, for the program and for hosts: a static library tool_NAME, or Tool::NAME for whoever finds the
# installed package, with the headers that lie in its folder. What it links is other rooms.
#
# tool_room(NAME SOURCES... [LINK TARGETS...] [INSIDE HEADERS...])
function(tool_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "LINK;INSIDE")
    add_library(tool_${name} STATIC ${room_UNPARSED_ARGUMENTS})
    add_library(Tool::${name} ALIAS tool_${name})
    target_link_libraries(tool_${name}
        PUBLIC ${room_LINK}
        PRIVATE $<BUILD_INTERFACE:tool_flags> $<BUILD_INTERFACE:tool_warnings>)
    target_include_directories(tool_${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    set_target_properties(tool_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON EXPORT_NAME ${name})
    install(TARGETS tool_${name} EXPORT Tool_${name}_targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    install(EXPORT Tool_${name}_targets NAMESPACE Tool:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tool
        COMPONENT development)
    file(GLOB headers CONFIGURE_DEPENDS *.h)
    foreach(inside IN LISTS room_INSIDE)
        list(REMOVE_ITEM headers ${CMAKE_CURRENT_SOURCE_DIR}/${inside})
    endforeach()
    install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tool/${name} COMPONENT development)
    # For cmake/package.cmake, which says what must be found before it.
    set(needs ${room_LINK})
    list(FILTER needs INCLUDE REGEX "^tool_")
    list(TRANSFORM needs REPLACE "^tool_" "")
    list(JOIN needs "," needs)
    set_property(GLOBAL APPEND PROPERTY TOOL_ROOMS "${name}|${needs}")
endfunction()
