# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Which Qt is told, not found: the ABI of the libraries must not depend on what a machine has.
set(ZEM_QT_VERSION_MAJOR 5 CACHE STRING "The Qt to build with, 5 or 6")
set_property(CACHE ZEM_QT_VERSION_MAJOR PROPERTY STRINGS 5 6)

# What is built on Qt 6 carries a suffix wherever it is installed, so that both can stand side by
# side: ZEM_SUFFIX for libraries, folders and files, ZEM_DASH_SUFFIX for the names of commands and
# Debian packages.
if(ZEM_QT_VERSION_MAJOR EQUAL 5)
    set(ZEM_QT_LEAST 5.15)
    set(ZEM_SUFFIX "")
    set(ZEM_DASH_SUFFIX "")
    set(ZEM_QT_DEV qtbase5-dev)
    set(zem_qt_packages "${ZEM_QT_DEV} on Debian and Ubuntu, qt5-qtbase-devel on Fedora, qt5-base on Arch")
elseif(ZEM_QT_VERSION_MAJOR EQUAL 6)
    set(ZEM_QT_LEAST 6.4)
    set(ZEM_SUFFIX Qt6)
    set(ZEM_DASH_SUFFIX -qt6)
    set(ZEM_QT_DEV qt6-base-dev)
    set(zem_qt_packages "${ZEM_QT_DEV} on Debian and Ubuntu, qt6-qtbase-devel on Fedora, qt6-base on Arch")
else()
    message(FATAL_ERROR "ZEM_QT_VERSION_MAJOR is ${ZEM_QT_VERSION_MAJOR}; it can be 5 or 6.")
endif()
set(ZEM_QT Qt${ZEM_QT_VERSION_MAJOR})

# Looks for Qt quietly: CMake's own report of a missing package doesn't say what to install.
find_package(${ZEM_QT} ${ZEM_QT_LEAST} QUIET COMPONENTS Core Gui)
if(NOT ${ZEM_QT}_FOUND)
    if(${ZEM_QT}_CONSIDERED_VERSIONS)
        list(JOIN ${ZEM_QT}_CONSIDERED_VERSIONS ", " found)
        set(found " (found: ${found})")
    endif()
    message(FATAL_ERROR
        "Qt ${ZEM_QT_LEAST} with its modules Core and Gui was not found${found}.\n"
        "Install its development files: ${zem_qt_packages}. If Qt stands elsewhere, name its "
        "folder with -DCMAKE_PREFIX_PATH=FOLDER.")
endif()
