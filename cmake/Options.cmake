# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# How this project compiles its own sources; nothing of it reaches a program that links the library.
option(ZEM_WERROR "Treat compiler warnings as errors" OFF)
option(ZEM_BUILD_HOST "Build the program zemscript" ${PROJECT_IS_TOP_LEVEL})
option(BUILD_TESTING "Build tests; those here only where this is the whole project" ON)
if(PROJECT_IS_TOP_LEVEL AND BUILD_TESTING)
    set(zem_tests_by_default ON)
endif()
option(ZEM_BUILD_TESTS "Build the tests" ${zem_tests_by_default})
option(ZEM_INSTALL "Install what is built" ${PROJECT_IS_TOP_LEVEL})
option(ZEM_SYSTEM_BASE "Link an installed ZemBase instead of building the one in base/" OFF)
option(ZEM_BUILD_BENCH "Build the benchmark, which needs Google Benchmark" OFF)
option(ZEM_FUZZ "Build the fuzzers and instrument the library for them, which needs Clang" OFF)

if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS AND PROJECT_IS_TOP_LEVEL)
    message(FATAL_ERROR "ZemFountain comes as shared libraries only, so that an application can "
        "put its own ZemBase in the place of ours. Leave BUILD_SHARED_LIBS unset or ON.")
endif()

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Type of build" FORCE)
endif()

set(CMAKE_AUTOMOC ON)
if(NOT CMAKE_CXX_STANDARD)
    set(CMAKE_CXX_STANDARD 17)
endif()
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ${ZEM_BUILD_TESTS})

# No build folder is named in a library: the same sources give the same bytes anywhere.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# An installed library or program finds the libraries next to it, wherever the prefix is moved to.
file(RELATIVE_PATH zem_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN $ORIGIN/${zem_bin_to_lib})
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ${ZEM_SYSTEM_BASE}) # and a ZemBase of others where it is

# What is generated in the build folder is not ours to tidy. One check has to be on.
if(CMAKE_CXX_CLANG_TIDY)
    file(WRITE ${PROJECT_BINARY_DIR}/.clang-tidy "Checks: '-*,misc-static-assert'\n")
endif()

if(ZEM_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    add_link_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
endif()

add_library(zem_options INTERFACE)
target_compile_features(zem_options INTERFACE cxx_std_17)
target_compile_options(zem_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow $<$<BOOL:${ZEM_WERROR}>:-Werror>
    # QSKIP() of Qt 5 takes nothing where its "..." stands, which Clang calls pedantic.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
target_compile_definitions(zem_options INTERFACE
    QT_DEPRECATED_WARNINGS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)

# What the two libraries have in common.
function(zem_library name)
    add_library(${name}::${name} ALIAS ${name})
    target_link_libraries(${name} PRIVATE zem_options)
    # Lets the library's calls of its own exported operations be inlined. Nobody interposes them.
    target_compile_options(${name} PRIVATE -fno-semantic-interposition)
    # The compiler hides nearly everything; some inline functions of Qt only the linker can.
    target_link_options(${name} PRIVATE
        LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME ${name}${ZEM_SUFFIX}
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
endfunction()
