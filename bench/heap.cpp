// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "bench/heap.h"

#include <atomic>
#include <cstddef>

namespace {

std::atomic<qint64> requests, bytes;

} // namespace

HeapUse heapUse()
{
    return {requests, bytes};
}

// A program's own malloc() takes the place of the C library's in all of its shared libraries. These
// are the names under which glibc offers its own. A sanitizer has a malloc() already.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *memory, size_t size);
// NOLINTEND(bugprone-reserved-identifier)

void *malloc(size_t size)
{
    ++requests;
    bytes += qint64(size);
    return __libc_malloc(size);
}

void *calloc(size_t count, size_t size)
{
    ++requests;
    bytes += qint64(count) * qint64(size);
    return __libc_calloc(count, size);
}

void *realloc(void *memory, size_t size)
{
    ++requests;
    bytes += qint64(size);
    return __libc_realloc(memory, size);
}
}
#endif
