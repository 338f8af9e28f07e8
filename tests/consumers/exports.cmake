# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Fails when LIBRARY exports a symbol of other classes than CLASSES, or needs other libraries than
# NEEDED. Both are regular expressions.
execute_process(COMMAND ${NM} -DC --defined-only ${LIBRARY}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${READELF} -d ${LIBRARY}
    OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
if(NOT symbols)
    message(FATAL_ERROR "${LIBRARY} exports nothing")
endif()
foreach(symbol IN LISTS symbols)
    if(NOT symbol MATCHES "^[0-9a-f]+ [A-Z] ([a-z ]+ for )?(${CLASSES})(::|$)")
        message(SEND_ERROR "Exported, and not meant to be: ${symbol}")
    endif()
endforeach()

string(REGEX MATCHALL "Shared library: [^\n]+" libraries "${dynamic}")
foreach(library IN LISTS libraries)
    if(NOT library MATCHES "(${NEEDED}|stdc\\+\\+|gcc_s|m|c)\\.so")
        message(SEND_ERROR "Needed, and not meant to be: ${library}")
    endif()
endforeach()
