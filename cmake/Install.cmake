# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Components: library (to run) and development (to build against) of each of the two libraries, and
# tool (zemscript). What is of Qt 6 carries its suffix.
include(CMakePackageConfigHelpers)

set(zem_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/zemfountain${ZEM_SUFFIX})

# A library with its headers and its CMake package.
function(zem_install name library development)
    set(package ${name}${ZEM_SUFFIX})
    set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${package})
    # The include folder stands there twice: CMake before 3.23 knows no file sets.
    install(TARGETS ${name} EXPORT ${package}Targets
        LIBRARY COMPONENT ${library} NAMELINK_COMPONENT ${development}
        ARCHIVE COMPONENT ${development}
        INCLUDES DESTINATION ${zem_include_dir}
        FILE_SET HEADERS DESTINATION ${zem_include_dir} COMPONENT ${development})
    install(EXPORT ${package}Targets NAMESPACE ${name}::
        DESTINATION ${cmake_dir} COMPONENT ${development})
    configure_package_config_file(cmake/${name}Config.cmake.in ${package}Config.cmake
        INSTALL_DESTINATION ${cmake_dir} NO_SET_AND_CHECK_MACRO)
    write_basic_package_version_file(${package}ConfigVersion.cmake
        COMPATIBILITY SameMajorVersion)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${package}Config.cmake
        ${CMAKE_CURRENT_BINARY_DIR}/${package}ConfigVersion.cmake
        DESTINATION ${cmake_dir} COMPONENT ${development})
endfunction()

zem_install(ZemFountain library development)
if(NOT ZEM_SYSTEM_BASE)
    zem_install(ZemBase base base_development)
endif()

# From the folder of the .pc file, so that the prefix may be moved; unless the folders are told as
# absolute paths.
set(zem_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
    set(zem_pc_prefix ${CMAKE_INSTALL_PREFIX})
    set(zem_pc_libdir ${CMAKE_INSTALL_FULL_LIBDIR})
    set(zem_pc_includedir ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
    file(RELATIVE_PATH zem_pc_to_prefix /prefix/${zem_pkgconfig_dir} /prefix)
    set(zem_pc_prefix "\${pcfiledir}/${zem_pc_to_prefix}")
    set(zem_pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
    set(zem_pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(cmake/zemfountain.pc.in zemfountain${ZEM_SUFFIX}.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zemfountain${ZEM_SUFFIX}.pc
    DESTINATION ${zem_pkgconfig_dir} COMPONENT development)

if(ZEM_BUILD_HOST)
    install(TARGETS zemscript COMPONENT tool)
    install(FILES docs/zemscript.1 RENAME zemscript${ZEM_SUFFIX}.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT manual)
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zemfountain${ZEM_SUFFIX}
    COMPONENT licence)
