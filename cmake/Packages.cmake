# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Three Debian packages, one for each component: cmake --workflow --preset deb
# It needs dpkg-dev and file.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zemfountain)
set(CPACK_PACKAGE_CONTACT "The ZemFountain authors <zemfountain@example.org>")
set(CPACK_COMPONENTS_ALL library development tool)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/base)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(zem_this_library "libzemfountain${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libzemfountain${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "${PROJECT_DESCRIPTION}: libraries")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzemfountain-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${zem_this_library}, qtbase5-dev (>= 5.15)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${PROJECT_DESCRIPTION}: development files")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME zemscript)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION text)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${zem_this_library}")
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS fonts-liberation) # the type of the PDF
set(CPACK_COMPONENT_TOOL_DESCRIPTION "${PROJECT_DESCRIPTION}: command-line program")

# Debian looks for the licence of a package under the package's own name.
foreach(component LIBRARY DEVELOPMENT TOOL)
    string(TOLOWER ${component} name)
    install(FILES LICENSE RENAME copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}
        COMPONENT ${name} EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
