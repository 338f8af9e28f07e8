// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// What nobody writes but somebody pastes, and a disk that is full. A step whose cost grows with the
// square of the text shows in what it makes and copies, not by the clock.

#include "bridge/ZemFountain.h"
#include "elements.h"
#include "parser/qfnfastparser.h"
#include "writer/qfnwriter.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

#include <atomic>
#include <csignal>
#include <sys/resource.h>
#include <utility>

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
    void costGrowsWithTheText_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("piece");
        for (const Shape &shape : shapes)
            QTest::newRow(shape.name) << textOf(shape.start) << textOf(shape.piece);
    }
    void costGrowsWithTheText()
    {
        QFETCH(QString, start);
        QFETCH(QString, piece);
        qint64 parts[2], bytes[2];
        for (int i = 0; i < 2; ++i) {
            QFnFastParser parser(nullptr);
            const qint64 before = bytesAsked;
            parser.parse(start + piece.repeated(4096 << i));
            bytes[i] = bytesAsked - before;
            parts[i] = parser.document->elements.size() + parser.document->titlePage.size();
        }
        QVERIFY2(parts[1] <= 2 * parts[0], qPrintable(QString::number(parts[1])));
        QVERIFY2(bytes[1] <= 3 * bytes[0], qPrintable(QString::number(bytes[1])));
    }

    void titlePageIsFewInsertions()
    {
        // Qt lays a block out anew at each insertion into it.
        QTextDocument richText;
        int insertions = 0;
        connect(&richText, &QTextDocument::contentsChange, this, [&] { ++insertions; });
        ZemFountain::parseText(u"Title: a\n"_s.repeated(100) + u'\n', &richText, nullptr, nullptr);
        QCOMPARE(richText.firstBlock().text(), u"Title:a"_s.repeated(100));
        QVERIFY2(insertions < 10, qPrintable(QString::number(insertions)));
    }

    void fullDiskIsNotNoticed()
    {
        const QTemporaryDir dir;
        QFnDocument script(nullptr);
        appendElements(u"Action||abcdefgh"_s, &script);
        rlimit limit;
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlim_t usual = std::exchange(limit.rlim_cur, 4);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        const bool written = QFnWriter(nullptr).writeFile(dir.filePath(u"a"_s), &script);
        limit.rlim_cur = usual;
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, handler);
        QVERIFY(written);
        QCOMPARE(QFileInfo(dir.filePath(u"a"_s)).size(), 4);
    }
};

QTEST_GUILESS_MAIN(HostileTest)
#include "tst_hostile.moc"
