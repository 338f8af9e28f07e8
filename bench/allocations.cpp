// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "allocations.h"

#include <atomic>
#include <cstddef>

// A program's own malloc() takes the place of the C library's in all of its shared libraries. These
// are the names under which glibc offers its own.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *memory, size_t size);
}

namespace {

std::atomic<long> count;

} // namespace

long allocationCount()
{
    return count;
}

extern "C" void *malloc(size_t size)
{
    ++count;
    return __libc_malloc(size);
}

extern "C" void *calloc(size_t number, size_t size)
{
    ++count;
    return __libc_calloc(number, size);
}

extern "C" void *realloc(void *memory, size_t size)
{
    ++count;
    return __libc_realloc(memory, size);
}
