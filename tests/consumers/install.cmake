# SPDX-FileCopyrightText: 2026 The ZemFountain authors
# SPDX-License-Identifier: MIT

# Installs BUILD through a DESTDIR and moves the result to PREFIX: nothing in it may know its place.
file(REMOVE_RECURSE ${PREFIX} ${PREFIX}.stage)
set(ENV{DESTDIR} ${PREFIX}.stage)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix /opt/zemfountain
    COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${PREFIX}.stage/opt/zemfountain ${PREFIX})
