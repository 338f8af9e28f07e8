# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Fails when the binary interface of LIBRARY is not that of the xz-compressed RECORD.
get_filename_component(name ${RECORD} NAME_WLE)
execute_process(COMMAND ${XZ} -dc ${RECORD} OUTPUT_FILE ${name} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${ABIDIFF} ${name} ${LIBRARY} COMMAND_ERROR_IS_FATAL ANY)
