// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HEAP_H
#define HEAP_H

#include <QtCore/QtGlobal>

/// What the program has asked of the heap since it began. A program that links heap.cpp counts it;
/// under a sanitizer and without glibc nothing is counted.
struct HeapUse
{
    qint64 requests = 0, bytes = 0;
};

HeapUse heapUse();

#endif
