# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Debian packages, one for each component: cmake --workflow --preset deb
# It needs dpkg-dev and file.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zemfountain)
set(CPACK_PACKAGE_CONTACT "The ZemFountain authors <zemfountain@example.org>")
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/base)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# Compresses as Debian wants it, without a time stamp.
function(zem_compress file out)
    execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${out})
endfunction()
configure_file(cmake/changelog.in changelog @ONLY)
zem_compress(${PROJECT_BINARY_DIR}/changelog ${PROJECT_BINARY_DIR}/changelog.gz)

# The linker's cache is renewed by a trigger. The two scripts are named and don't exist: CPack would
# otherwise write its own, which call ldconfig.
file(WRITE ${PROJECT_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
set(zem_ldconfig ${PROJECT_BINARY_DIR}/triggers ${PROJECT_BINARY_DIR}/none/postinst
    ${PROJECT_BINARY_DIR}/none/postrm)

# Makes a package of COMPONENT. Each brings its licence and its list of changes.
macro(zem_package component name section depends description)
    string(TOUPPER ${component} zem_component)
    set(CPACK_DEBIAN_${zem_component}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${zem_component}_PACKAGE_SECTION ${section})
    set(CPACK_DEBIAN_${zem_component}_PACKAGE_DEPENDS "${depends}")
    set(CPACK_COMPONENT_${zem_component}_DESCRIPTION "${description}")
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    install(FILES LICENSE RENAME copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
    install(FILES ${PROJECT_BINARY_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

# The packages to run LIBRARY and to build against it. DEPENDS is what the second needs besides the
# first.
macro(zem_library_packages library depends description)
    string(TOLOWER ${library} zem_lower)
    set(zem_runtime lib${zem_lower}${zem_package_suffix})
    zem_package(${zem_lower}_library ${zem_runtime} libs "" "${description}")
    set(CPACK_DEBIAN_${zem_component}_PACKAGE_CONTROL_EXTRA ${zem_ldconfig})
    zem_package(${zem_lower}_development lib${zem_lower}${zem_dev_suffix} libdevel
        "${zem_runtime} (= ${PROJECT_VERSION}), ${depends}"
        "${description}\nThis package has what a program is built against.")
endmacro()

# By Debian's custom a package has the name and version of its library, with a dash between digits.
string(TOLOWER "${ZEM_SUFFIX}" zem_dev_suffix)
set(zem_package_suffix ${zem_dev_suffix}${PROJECT_VERSION_MAJOR})
string(REGEX REPLACE "^qt6" "qt6-" zem_package_suffix ${zem_package_suffix})
string(APPEND zem_dev_suffix -dev)

set(CPACK_COMPONENTS_ALL)
if(NOT ZEM_SYSTEM_BASE)
    zem_library_packages(ZemBase "${ZEM_QT_DEV} (>= ${ZEM_QT_LEAST})"
        "This library has the records of the kinds of paragraph.")
endif()
zem_library_packages(ZemFountain "libzembase${zem_dev_suffix} (>= ${PROJECT_VERSION_MAJOR})"
    "This library takes scripts to and from rich text.")
if(ZEM_BUILD_HOST)
    zem_package(tool zemscript${ZEM_DASH_SUFFIX} text ""
        "This program reads, writes and edits scripts.")
    set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS fonts-liberation) # the type of the pages
    zem_compress(${PROJECT_SOURCE_DIR}/docs/zemscript.1 ${PROJECT_BINARY_DIR}/zemscript.1.gz)
    install(FILES ${PROJECT_BINARY_DIR}/zemscript.1.gz RENAME zemscript${ZEM_DASH_SUFFIX}.1.gz
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool EXCLUDE_FROM_ALL)
endif()

include(CPack)
