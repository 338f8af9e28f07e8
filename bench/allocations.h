// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ALLOCATIONS_H
#define ALLOCATIONS_H

/// How often this program has asked for memory on the heap so far: the calls of malloc(), calloc()
/// and realloc(), those behind new and behind the containers of Qt included.
long allocationCount();

#endif
