# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

include(CMakeFindDependencyMacro)
find_dependency(Qt5 5.15 COMPONENTS Core Gui)
include(${CMAKE_CURRENT_LIST_DIR}/ZemFountainTargets.cmake)
