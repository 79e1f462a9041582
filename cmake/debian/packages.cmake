# Debian packages, by `cmake --workflow --preset package` or, of any build, by cpack: the library, what compiling
# against it needs, the program, the page of "cephtool digitise", and the package for Python. "libtool" is another's name there.
# cmake/archives.cmake has what is handed on otherwise.
find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
find_program(GZIP gzip)
if(CMAKE_CROSSCOMPILING OR NOT TARGET cephtool)
    return()
endif()
if(NOT DPKG_SHLIBDEPS OR NOT GZIP)
    message(STATUS "Debian packages left out: dpkg-shlibdeps or gzip was not found (Debian: dpkg-dev, gzip)")
    return()
endif()

set(CPACK_COMPONENTS_ALL library development program)
set(library_package libceph-tool${tool_interface})
set(development_package libceph-tool-dev)
set(program_package cephtool)
if(TOOL_PAGE)
    list(APPEND CPACK_COMPONENTS_ALL digitiser)
    set(digitiser_package cephtool-digitiser)
endif()
if(TARGET python_engine)
    list(APPEND CPACK_COMPONENTS_ALL python)
    set(python_package python3-cephtool)
endif()

# The newest entry names the version and its revision in Debian.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/changelog)
file(READ ${CMAKE_CURRENT_LIST_DIR}/changelog changelog)
if(NOT changelog MATCHES "^cephtool \\(${PROJECT_VERSION}-([0-9]+)\\)")
    message(FATAL_ERROR "cmake/debian/changelog does not begin with version ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
set(same_version "(= ${PROJECT_VERSION}-${CMAKE_MATCH_1})")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(about [[
It turns the landmarks of a head X-ray, of a cast or of a photograph's
headers into angles, lengths, ratios and growth stages, and compares them
with published norms.]])
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "cephalometric analysis for orthodontists (library)
${about}\n.\nThis package holds the library.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "cephalometric analysis for orthodontists (development files)
${about}\n.\nThis package holds headers, drawing surfaces, readers of X-rays, and what CMake
and pkg-config ask for.")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "cephalometric analysis for orthodontists (program)
${about}\n.\nThis package holds the program with its analyses, display modes and samples.
It prints tables, tracings, charts and reports.")

set(CPACK_COMPONENT_DIGITISER_DESCRIPTION "cephalometric analysis for orthodontists (digitiser)
${about}\n.\nThis package holds the page that \"cephtool digitise\" opens in a browser, which
works without a network: landmarks are placed on films there, and measured.")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "cephalometric analysis for orthodontists (Python 3)
${about}\n.\nThis package holds the module for Python: cases and arrays of landmarks go in,
data frames and arrays come out.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} ${same_version}")
if(surface_modules)
    string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libcairo2-dev, libpango1.0-dev, libpng-dev")
endif()
foreach(entry IN LISTS film_modules)
    foreach(package "libjpeg|libjpeg-dev" "libpng|libpng-dev" "libtiff|libtiff-dev" "zlib|zlib1g-dev" "openjp2|libopenjp2-7-dev")
        string(REPLACE "|" ";" package "${package}")
        list(GET package 0 module)
        list(GET package 1 name)
        if(entry MATCHES "${module}")
            string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", ${name}")
        endif()
    endforeach()
endforeach()
if(film_libraries)
    string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libdcmtk-dev")
endif()
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "${library_package} (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "cephtool-digitiser ${same_version}, fonts-ipafont-gothic")
set(CPACK_DEBIAN_DIGITISER_PACKAGE_SECTION science)
set(CPACK_DEBIAN_DIGITISER_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
if(TARGET python_engine)  # which one minor version of Python can load
    math(EXPR next_python "${Python_VERSION_MINOR} + 1")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${program_package} ${same_version}, python3 (>= 3.${Python_VERSION_MINOR}), \
python3 (<< 3.${next_python}), python3-numpy")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "python3-pandas, python3-scipy")
endif()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(package ${${component}_package})
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
    set(documents ${PROJECT_BINARY_DIR}/debian/${package})
    configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog ${documents}/changelog.Debian COPYONLY)
    execute_process(COMMAND ${GZIP} -9nf ${documents}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
    # Only a package holds these: `cmake --install` passes them over.
    install(FILES ${documents}/changelog.Debian.gz ${CMAKE_CURRENT_LIST_DIR}/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
    install(FILES ${CMAKE_CURRENT_LIST_DIR}/${component}.lintian-overrides RENAME ${package}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
# The system knows where its libraries are.
set(packed_program \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBEXECDIR}/cephtool/cephtool)
install(CODE "file(RPATH_REMOVE FILE ${packed_program})" COMPONENT program EXCLUDE_FROM_ALL)
if(TARGET python_engine)
    set(packed_module \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${python_folder}/$<TARGET_FILE_NAME:python_engine>)
    install(CODE "file(RPATH_REMOVE FILE ${packed_module})" COMPONENT python EXCLUDE_FROM_ALL)
endif()

list(APPEND CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Tool maintainers <maintainers@users.noreply.c-seed-2ef94938.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/triggers)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
