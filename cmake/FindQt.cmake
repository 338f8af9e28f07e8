# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Looks for Qt quietly: CMake's own report of a missing package doesn't say what to install.
find_package(Qt5 5.15 QUIET COMPONENTS Core Gui)
if(NOT Qt5_FOUND)
    if(Qt5_CONSIDERED_VERSIONS)
        list(JOIN Qt5_CONSIDERED_VERSIONS ", " found)
        set(found " (found: ${found})")
    endif()
    message(FATAL_ERROR
        "Qt 5.15 with its modules Core and Gui was not found${found}.\n"
        "Install its development files: qtbase5-dev on Debian and Ubuntu, qt5-qtbase-devel on "
        "Fedora, qt5-base on Arch. If Qt stands elsewhere, name its folder with "
        "-DCMAKE_PREFIX_PATH=FOLDER.")
endif()
