# Packages of the machine that builds which serve a cross build too: headers, seen through a folder that holds nothing
# else, and GoogleTest's sources.
set(header_folder ${PROJECT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${header_folder})
foreach(package "CLI11 CLI11 CLI" "nlohmann_json nlohmann_json nlohmann" "Eigen3 Eigen eigen3/Eigen")
    separate_arguments(package)
    list(GET package 0 name)
    list(GET package 1 target)
    list(GET package 2 folder)
    string(TOLOWER ${name} lower_name)
    get_filename_component(folder_name ${folder} NAME)
    if(EXISTS /usr/include/${folder})
        file(CREATE_LINK /usr/include/${folder} ${header_folder}/${folder_name} SYMBOLIC)
        file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/${lower_name}-config.cmake
            "add_library(${name}::${target} INTERFACE IMPORTED GLOBAL)\n"
            "target_include_directories(${name}::${target} SYSTEM INTERFACE ${header_folder})\n")
    endif()
endforeach()

if(WIN32 AND EXISTS /usr/src/googletest/CMakeLists.txt)
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
    # Tests hold Japanese text in code page 932, as the hosts do.
    target_sources(gmock_main INTERFACE ${CMAKE_CURRENT_LIST_DIR}/windows/code_page_932.rc)
    file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/gtest-config.cmake "# Built above.\n")
endif()
