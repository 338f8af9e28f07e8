// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "writer/qfnwriter.h"

#include "dump.h"
#include "parser/qfnfastparser.h"

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
    {"heading with prefix", u"SceneHeading||int./ext b\nSceneHeading||I/E.c", u"\nint./ext b\nI/E.c"},
    {"heading without", u"SceneHeading||INT\nSceneHeading||.A\nSceneHeading||INTO", u"\n.INT\n.A\n.INTO"},
    {"marks run on", u"Action||a\nSectionHeading||b\nSynopsis||c\nTransition||d", u"\na#b=c>d"},
    {"marks that are there", u"SectionHeading||##a\nSynopsis||=b\nTransition||>c", u"##a=b>c"},
};

// What is written reads back as other elements, unless empty ones ("-") stand in the right places.
const Row readBackRows[] = {
    {"actions join", u"Action||a b\nAction|b|c\n-\nAction||d", u"Action||a bc\\nd"},
    {"speech in one line is action", u"Character||Anna\nDialogue||Hi.", u"Action||ANNAHi."},
    {"speech", u"Character||a\n-\nParenthetical||b\n-\n", u"Character||A\nParenthetical||b\nDialogue||"},
    {"headings", u"SceneHeading||INT. A\n-\nSceneHeading||b\n-\n-", u"Scene Heading||A\nScene Heading||b\nUndefined||"},
    {"marked lines", u"Action||a\n-\n-\nTransition||b\n-\n-\nSectionHeading||c\n-\n-\nSynopsis||d\n-\nAction||e f",
     u"Action||a\nTransition||b\nSection Heading||c|depth 1\nSynopsis||d\nAction||e f"},
    {"note", u"Action||a b\nNotes||c\nAction||d", u"Action||a b\nNotes||c\nAction||d"},
    {"note with a blank line", u"Notes||a\\n\\nb", u"Notes||a\nAction||  b]]"},
    {"others", u"Action||a b\nPageBreak||x\nBoneyard||c\nGeneral||d", u"Action||a b\nPageBreak||===\nAction||cd"},
};

// The text of each line, "end" for a call that closes the marks.
const Row styleRows[] = {
    {"marks nest", u"|biuc|a\nend", u">_***A***_<"},
    {"closed marks open anew", u"|b|a\nend\n|b|b\nend\n||c", u"**A****B**C"},
    {"open marks go on", u"|bc|a\n|bic|b\nend", u">**A*B***<"},
    {"marks that end are forgotten", u"|b|a\n||b\nend", u"**AB"},
    {"marks around nothing, capitals", u"|b|\nend\n|i|\u00df", u"*****SS"},
};
// clang-format on

QString written(const QString &lines)
{
    QFnDocument document(nullptr);
    appendElements(lines, &document);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QFnWriter writer(&buffer);
    return writer.write(&document) ? QString::fromUtf8(buffer.data()) : u"failed"_s;
}

QString readBack(const QString &lines)
{
    QFnFastParser parser(nullptr);
    parser.parse(written(lines));
    return dump(*parser.document);
}

QString styled(const QString &lines)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QFnWriter writer(&buffer);
    for (const QString &line : lines.split(u'\n')) {
        const QFnElement element = elementOf(line);
        line == u"end"_s ? writer.finalizeLastElementStyle() : writer.writeElementText(&element);
    }
    return QString::fromUtf8(buffer.data());
}

} // namespace

class WriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void forms_data() { addRows(formRows); }
    void forms() { check(written); }
    void formsReadBack_data() { addRows(readBackRows); }
    void formsReadBack() { check(readBack); }
    void styledText_data() { addRows(styleRows); }
    void styledText() { check(styled); }

    void onlyTypeAndTextAreWritten()
    {
        QFnDocument document(nullptr);
        document.titlePage.insert(u"Title"_s, u"A"_s);
        appendElements(u"SceneHeading||a\n||b"_s, &document);
        document.elements.first()->sceneNumber = u"1"_s;
        document.elements.last()->type = QFnElement::Type(13);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QFnWriter writer(&buffer);
        writer.style.bold = true; // the walk closes what stands open
        QVERIFY(writer.write(&document));
        QVERIFY(!writer.document && !writer.write(nullptr) && !writer.writeDocument());
        QCOMPARE(buffer.data(), QByteArray("**\n.a\nb"));
    }

    void fileIsWritten()
    {
        const QTemporaryDir dir;
        QFile file(dir.filePath(u"a.fountain"_s));
        QFnDocument document(nullptr);
        appendElements(u"Action||\u00e9"_s, &document);
        QFnWriter writer(&file);
        QVERIFY(!writer.writeFile(dir.path(), &document));
        const QString error = writer.errorString;
        QVERIFY(!error.isEmpty() && writer.device == &file);
        QVERIFY(writer.writeFile(file.fileName(), &document));
        QVERIFY(!writer.device && writer.errorString == error);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("\n\xC3\xA9"));
        QVERIFY(!writer.writeFile(file.fileName(), nullptr));
        QCOMPARE(file.size(), 0);
    }
};

QTEST_GUILESS_MAIN(WriterTest)
#include "tst_writer.moc"
