# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# How this project compiles its own sources; nothing of it reaches a program that links the library.
option(ZEM_WERROR "Treat compiler warnings as errors" OFF)

add_library(zem_options INTERFACE)
target_compile_features(zem_options INTERFACE cxx_std_17)
target_compile_options(zem_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow $<$<BOOL:${ZEM_WERROR}>:-Werror>)
target_compile_definitions(zem_options INTERFACE
    QT_DEPRECATED_WARNINGS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
