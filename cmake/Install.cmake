# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Two components for each library, NAME_library (to run) and NAME_development (to build against),
# then tool (zemscript), manual and licence.
include(CMakePackageConfigHelpers)

# In a .pc file the folders go out from where it stands, so that the prefix may be moved; folders
# that are told as absolute ones stay what they are.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(zem_pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
    file(RELATIVE_PATH zem_pc_to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
    set(zem_pc_prefix "\${pcfiledir}/${zem_pc_to_prefix}")
endif()
foreach(dir libdir includedir)
    string(TOUPPER CMAKE_INSTALL_${dir} variable)
    cmake_path(ABSOLUTE_PATH ${variable} BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE zem_pc_${dir})
endforeach()

# Installs the library NAME with headers, CMake package and .pc file. LIBRARIES are those of
# this project that it needs.
function(zem_install name description libraries)
    set(package ${name}${ZEM_SUFFIX})
    string(TOLOWER ${name} lower)
    set(folder ${lower}${ZEM_SUFFIX})
    set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${package})
    # A file set takes no absolute folder: CMake would put the prefix in front of it.
    file(RELATIVE_PATH headers_dir ${CMAKE_INSTALL_PREFIX}
        ${CMAKE_INSTALL_FULL_INCLUDEDIR}/${folder})

    # A CMake before 3.23 knows no file sets and reads the folder of the headers from INCLUDES.
    install(TARGETS ${name} EXPORT ${package}Targets
        LIBRARY COMPONENT ${lower}_library NAMELINK_COMPONENT ${lower}_development
        FILE_SET HEADERS DESTINATION ${headers_dir} COMPONENT ${lower}_development
        INCLUDES DESTINATION ${headers_dir})
    install(EXPORT ${package}Targets NAMESPACE ${name}::
        DESTINATION ${cmake_dir} COMPONENT ${lower}_development)
    configure_package_config_file(cmake/Config.cmake.in ${package}Config.cmake
        INSTALL_DESTINATION ${cmake_dir} NO_SET_AND_CHECK_MACRO)
    write_basic_package_version_file(${package}ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${package}Config.cmake
        ${CMAKE_CURRENT_BINARY_DIR}/${package}ConfigVersion.cmake
        DESTINATION ${cmake_dir} COMPONENT ${lower}_development)

    set(requires "${ZEM_QT}Core >= ${ZEM_QT_LEAST}, ${ZEM_QT}Gui >= ${ZEM_QT_LEAST}")
    foreach(library IN LISTS libraries)
        string(TOLOWER ${library} library)
        string(APPEND requires ", ${library}${ZEM_SUFFIX} >= ${PROJECT_VERSION_MAJOR}")
    endforeach()
    configure_file(cmake/library.pc.in ${folder}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${folder}.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ${lower}_development)
endfunction()

if(NOT ZEM_SYSTEM_BASE)
    zem_install(ZemBase "Records of the kinds of paragraph of a script" "")
endif()
zem_install(ZemFountain "${PROJECT_DESCRIPTION}" ZemBase)
if(ZEM_BUILD_HOST)
    install(TARGETS zemscript COMPONENT tool)
    install(FILES docs/zemscript.1 RENAME zemscript${ZEM_DASH_SUFFIX}.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT manual)
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zemfountain${ZEM_SUFFIX}
    COMPONENT licence)
