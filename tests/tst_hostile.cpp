// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// What nobody writes but somebody pastes. A step whose cost grows with the square of the text shows
// in what it makes and copies, not by the clock.

#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"
#include "rows.h"

#include <atomic>

// A program's own malloc() takes the place of the C library's in all of its shared libraries. These
// are the names under which glibc offers its own. A sanitizer has a malloc() already.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
#define COUNTS_MEMORY 1
extern "C" {
void *__libc_malloc(size_t size); // NOLINT(bugprone-reserved-identifier)
// NOLINTNEXTLINE(bugprone-reserved-identifier)
void *__libc_realloc(void *memory, size_t size);
}
#endif

namespace {

/// The bytes that were asked of the heap. A text that is copied again and again shows here.
std::atomic<qint64> bytesAsked;

struct Shape
{
    const char *name;
    std::u16string_view start, piece; ///< what stands in front, and what is repeated behind it
};

// clang-format off
const Shape shapes[] = {
    {"boneyards", u"", u"/**/"},                    {"open boneyards", u"", u"/*"},
    {"notes", u"", u"[[x]]"},                       {"notes and text", u"", u"[[x]] y"},
    {"open notes", u"", u"[["},                     {"marks", u"", u"*_**"},
    {"marked letters", u"a b", u"*a"},              {"equals signs", u"", u"="},
    {"page breaks", u"", u"===\n"},                 {"dots", u"", u"."},
    {"exclamation marks", u"", u"!"},               {"centred lines", u"", u">a<\n"},
    {"numbers in a heading", u"\n.A", u"#a"},       {"parentheticals", u"A\n", u"(a)"},
    {"tabs in action", u"a", u"\t"},                {"line feeds in action", u"a", u"\n"},
    {"keys in a value", u"", u"TITLE:"},            {"entries", u"", u"TITLE:\n"},
    {"lost keys", u"", u"Draft\n"},                 {"lines of action", u"a b\n", u"a\n"},
    {"lines of dialogue", u"A\n", u"A\n"},          {"speeches", u"", u"A\nB\n\n"},
    {"one word", u"", u"a"},                        {"one line", u"", u"word "},
    {"capitals beyond ASCII", u"", u"\u00c4 "},
};
// clang-format on

struct Cost
{
    qint64 parts, bytes; ///< elements and entries, and what they and the way to them took
};

Cost costOf(const Shape &shape, int count)
{
    QFnFastParser parser(nullptr);
    const qint64 before = bytesAsked;
    parser.parse(textOf(shape.start) + textOf(shape.piece).repeated(count));
    const qint64 parts = parser.document->elements.size() + parser.document->titlePage.size();
    return {parts, bytesAsked - before};
}

} // namespace

#ifdef COUNTS_MEMORY
extern "C" void *malloc(size_t size)
{
    bytesAsked += qint64(size);
    return __libc_malloc(size);
}

extern "C" void *realloc(void *memory, size_t size)
{
    bytesAsked += qint64(size);
    return __libc_realloc(memory, size);
}
#endif

class HostileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void costGrowsWithTheText()
    {
        QStringList dear;
        for (const Shape &shape : shapes) {
            const Cost once = costOf(shape, 4096), twice = costOf(shape, 2 * 4096);
            if (twice.parts > 2 * once.parts || twice.bytes > 3 * once.bytes)
                dear += QString::fromLatin1(shape.name);
        }
        QCOMPARE(dear.join(u", "_s), QString());
    }
};

QTEST_GUILESS_MAIN(HostileTest)
#include "tst_hostile.moc"
