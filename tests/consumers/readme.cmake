# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Fails when the first example of README is not, but for its indentation, part of PROGRAM.
file(READ ${README} readme)
file(READ ${PROGRAM} program)
string(REGEX MATCH "```cpp\n([^`]*)```" block "${readme}")
string(REGEX REPLACE "\n +" "\n" example "\n${CMAKE_MATCH_1}")
string(REGEX REPLACE "\n +" "\n" program "${program}")
string(FIND "${program}" "${example}" place)
if(NOT block OR place EQUAL -1)
    message(FATAL_ERROR "${PROGRAM} does not hold this example:${example}")
endif()
