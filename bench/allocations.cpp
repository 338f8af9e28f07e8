// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// zemallocations EXAMPLE prints how often a parse asks for memory on the heap, for each token of
// the text. A program of its own, because the counting takes time.

#include "bench/script.h"
#include "parser/qfnfastparser.h"

#include <atomic>
#include <cstddef>
#include <cstdio>

// A program's own malloc() takes the place of the C library's in all of its shared libraries. These
// are the names under which glibc offers its own.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *memory, size_t size);
}

namespace {

std::atomic<long> count;

/// How many times a parse of \a text asks for memory, for each token of the text.
double allocationsForToken(const QString &text)
{
    QFnFastParser tokens(nullptr);
    tokens.buffer = text;
    int tokenCount = 0;
    while (tokens.nextToken().kind != QFnToken::EndOfInput)
        ++tokenCount;
    QFnFastParser parser(nullptr);
    const long before = count;
    parser.parse(text);
    return double(count - before) / tokenCount;
}

} // namespace

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

int main(int, char *argv[])
{
    const QString texts[] = {readFile(QString::fromLocal8Bit(argv[1])), generatedScript(512 << 10),
                             generatedScript(4 << 20)};
    for (const QString &text : texts)
        std::printf("%.2f a token of %d characters\n", allocationsForToken(text), int(text.size()));
    return 0;
}
