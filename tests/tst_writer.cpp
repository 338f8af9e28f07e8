// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "writer/qfnwriter.h"

#include "elements.h"
#include "files.h"

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>

namespace {

// clang-format off
const Row formRows[] = {
    {"lines", u"Undefined||a\nBoneyard||b\nGeneral||c\n-\nAction||d\\n", u"\na\nb\nc\n\nd\n"},
    {"no style", u"Action|biuc|a\nDialogue|b|b\nDialogue|i|c", u"\nabc"},
    {"speech", u"Character||Stra\u00dfe\nParenthetical||b\nDialogue||Hi.", u"\nSTRASSE(b)Hi."},
    {"parentheses that are there", u"Parenthetical||(a)\nParenthetical||(\nParenthetical||)", u"(a)()()"},
    {"note marks that are there", u"Notes||[[a]]\nNotes||[b]\nNotes||[[", u"[[a]][[[b]]][[]]"},
    {"blank lines in a note", u"Notes||a\\n\\n\\nb", u"[[a\n  \n\nb]]"},
    {"page break", u"PageBreak||x\nPageBreak||", u"\n===\n"},
    {"types below and above the enumeration", u"-1||a\n13||b", u"\na\nb"},
    {"prefixes with a blank", u"SceneHeading||INT a\nSceneHeading||EXT a\nSceneHeading||EST a\nSceneHeading||INT/EXT a\nSceneHeading||INT./EXT a\nSceneHeading||I/E a", u"\nINT a\nEXT a\nEST a\nINT/EXT a\nINT./EXT a\nI/E a"},
    {"prefixes with a dot", u"SceneHeading||INT.a\nSceneHeading||EXT.a\nSceneHeading||EST.a\nSceneHeading||INT/EXT.a\nSceneHeading||INT./EXT.a\nSceneHeading||I/E.a", u"\nINT.a\nEXT.a\nEST.a\nINT/EXT.a\nINT./EXT.a\nI/E.a"},
    {"no prefixes", u"SceneHeading||INTa\nSceneHeading||EXTa\nSceneHeading||EST\nSceneHeading||INT/EXTa\nSceneHeading||I/Ea", u"\n.INTa\n.EXTa\n.EST\n.INT/EXTa\n.I/Ea"},
    {"headings in small letters, forced, elsewhere", u"SceneHeading||int a\nSceneHeading||.a\nSceneHeading|| INT a", u"\nint a\n.a\n. INT a"},
    {"marks run on", u"Action||a\nSectionHeading||b\nSynopsis||c\nTransition||d", u"\na#b=c>d"},
    {"marks that are there", u"SectionHeading||##a\nSynopsis||=b\nTransition||>c", u"##a=b>c"},
};

// The text of each line, "end" for a call that closes the marks.
const Row styleRows[] = {
    {"marks nest", u"|biuc|a\nend", u">_***A***_<"},
    {"closed marks open anew", u"|b|a\nend\n|b|b\nend\n||c", u"**A****B**C"},
    {"centred among other flags", u"|132|a\nend\n|130|b\nend", u">A<B"},
    {"open marks go on", u"|bc|a\n|bic|b\nend", u">**A*B***<"},
    {"marks that end are forgotten", u"|b|a\n||b\nend", u"**AB"},
    {"marks around nothing, capitals", u"|b|\nend\n|i|\u00df", u"*****SS"},
};
// clang-format on

/// A writer and what it wrote.
struct Output
{
    Output() { buffer.open(QIODevice::WriteOnly); }

    QBuffer buffer;
    QFnWriter writer{&buffer};
};

QString written(const QString &lines)
{
    QFnDocument document(nullptr);
    appendElements(lines, &document);
    Output output;
    return output.writer.write(&document) ? QString::fromUtf8(output.buffer.data()) : u"failed"_s;
}

QString styled(const QString &lines)
{
    Output output;
    for (const QString &line : lines.split(u'\n')) {
        const QFnElement element = elementOf(line);
        line == u"end"_s ? output.writer.finalizeLastElementStyle()
                         : output.writer.writeElementText(&element);
    }
    return QString::fromUtf8(output.buffer.data());
}

} // namespace

class WriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void forms_data() { addRows(formRows); }
    void forms() { check(written); }
    void styledText_data() { addRows(styleRows); }
    void styledText() { check(styled); }

    void onlyTypeAndTextAreWritten()
    {
        QFnDocument document(nullptr);
        document.titlePage.insert(u"Title"_s, u"A"_s);
        appendElements(u"SceneHeading||a\n||b"_s, &document);
        document.elements.first()->sceneNumber = u"1"_s;
        Output output;
        QFnWriter &writer = output.writer;
        QVERIFY(writer.device == &output.buffer && !writer.document
                && writer.errorString.isEmpty());
        writer.style.bold = true; // the walk closes what stands open
        QVERIFY(writer.write(&document));
        QVERIFY(!writer.document && !writer.write(nullptr) && !writer.writeDocument());
        QCOMPARE(output.buffer.data(), QByteArray("**\n.a\nb"));
    }

    void fileIsWritten()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath(u"a.fountain"_s);
        QFile other(path);
        QFnDocument document(nullptr);
        appendElements(u"Action||\u00e9"_s, &document);
        QFnWriter writer(&other);
        QVERIFY(!writer.writeFile(dir.path(), &document));
        const QString error = writer.errorString;
        QVERIFY(!error.isEmpty() && writer.device == &other);
        QVERIFY(writer.writeFile(path, &document));
        QVERIFY(!writer.device && writer.errorString == error);
        QCOMPARE(contents(path), QByteArray("\n\xC3\xA9"));
        {
            const SizeLimit none(0);
            QVERIFY(writer.writeFile(path, &document)); // a full disk is not noticed
        }
        QVERIFY(!writer.writeFile(path, nullptr));
        QCOMPARE(contents(path), QByteArray());
    }
};

QTEST_GUILESS_MAIN(WriterTest)
#include "tst_writer.moc"
