// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// zemallocations EXAMPLE prints how often a parse asks for memory on the heap, for each token of
// the text. A program of its own, because the counting takes time.

#include "bench/heap.h"
#include "bench/script.h"
#include "parser/qfnfastparser.h"

#include <cstdio>

namespace {

/// How many times a parse of \a text asks for memory, for each token of the text.
double allocationsForToken(const QString &text)
{
    QFnFastParser tokens(nullptr);
    tokens.buffer = text;
    int tokenCount = 0;
    while (tokens.nextToken().kind != QFnToken::EndOfInput)
        ++tokenCount;
    QFnFastParser parser(nullptr);
    const qint64 before = heapUse().requests;
    parser.parse(text);
    return double(heapUse().requests - before) / tokenCount;
}

} // namespace

int main(int, char *argv[])
{
    const QString texts[] = {readFile(QString::fromLocal8Bit(argv[1])), generatedScript(512 << 10),
                             generatedScript(4 << 20)};
    for (const QString &text : texts)
        std::printf("%.2f a token of %d characters\n", allocationsForToken(text), int(text.size()));
    return 0;
}
