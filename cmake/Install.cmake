# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Three components: library (to run), development (to build against) and tool (zemscript).
include(CMakePackageConfigHelpers)

set(zem_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZemFountain)
set(zem_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS ZemFountain ZemBase EXPORT ZemFountainTargets
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zemfountain COMPONENT development)
if(ZEM_BUILD_HOST)
    install(TARGETS zemscript COMPONENT tool)
    install(FILES docs/zemscript.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zemfountain COMPONENT library)

install(EXPORT ZemFountainTargets NAMESPACE ZemFountain::
    DESTINATION ${zem_cmake_dir} COMPONENT development)
write_basic_package_version_file(ZemFountainConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/ZemFountainConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/ZemFountainConfigVersion.cmake
    DESTINATION ${zem_cmake_dir} COMPONENT development)

# From the folder of the .pc file, so that the prefix may be moved.
file(RELATIVE_PATH zem_pc_to_prefix /prefix/${zem_pkgconfig_dir} /prefix)
configure_file(cmake/zemfountain.pc.in zemfountain.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zemfountain.pc
    DESTINATION ${zem_pkgconfig_dir} COMPONENT development)
