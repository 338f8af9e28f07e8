// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "fuzz/scripts.h"
#include "host/reading.h"
#include "host/records.h"
#include "rows.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>

namespace {

using Host::Paragraph;
using Host::Stretch;

/// A stretch as its text, in braces with its look if it has one: "{b bold}", "{note [[n]]}".
QString lookOf(const Stretch &stretch)
{
    QString look;
    for (const auto &flag : {qMakePair(stretch.bold, u'b'), qMakePair(stretch.italic, u'i'),
                             qMakePair(stretch.underline, u'u')}) {
        if (flag.first)
            look += QChar(flag.second);
    }
    if (stretch.kind != Stretch::Text)
        look += stretch.kind == Stretch::Note ? u"note"_s : u"comment"_s;
    const QString text = QString(stretch.text).replace(QChar(QChar::LineSeparator), u'|');
    return look.isEmpty() ? text : u"{%1 %2}"_s.arg(look, text);
}

/// A line for each paragraph: kind, what else there is to tell, text. Blank lines are "-".
QString listed(const QVector<Paragraph> &script)
{
    QStringList lines;
    for (const Paragraph &paragraph : script) {
        QString line =
            paragraph.titlePage ? u"Title"_s : QFnElement::toString(paragraph.type).remove(u' ');
        if (paragraph.centred)
            line += u" centred"_s;
        if (paragraph.depth > 0)
            line += u" %1"_s.arg(paragraph.depth);
        if (!paragraph.sceneNumber.isEmpty())
            line += u" #"_s + paragraph.sceneNumber;
        line += u": "_s;
        for (const Stretch &stretch : paragraph.stretches)
            line += lookOf(stretch);
        lines.append(line == u"Action: "_s ? u"-"_s : line);
    }
    return lines.join(u'\n');
}

// clang-format off
const Row readingRows[] = {
    {"lines of action stay lines", u"She hits\nthe play button.\n", u"Action: She hits|the play button."},
    {"lines of centred text stay lines", u"> A <\n> B <\n", u"Action centred: A|B"},
    {"a forcing mark is of the first line alone", u"b\n!LOUD\nc\n", u"Action: b\nAction: LOUD|c"},
    {"more than one blank line", u"A\n\n\n\nB\n", u"Action: A\n-\n-\nAction: B"},
    {"the title page", u"Title: The *Sea*\nAuthor:\nContact:\n    a\n    b\n\nTitle: x\n",
     u"Title: Title: The {i Sea}\nTitle: Author:\nTitle: Contact:|    a|    b\nAction: Title: x"},
    {"keys further down are text", u"A\n\nNotes about the sea\n\nANNA\nTitle fights are rigged.\n\nAUTHOR\nNo.\n",
     u"Action: A\nAction: Notes about the sea\nCharacter: ANNA\nDialogue: Title fights are rigged.\n"
     "Character: AUTHOR\nDialogue: No."},
    {"a heading with a number", u"INT. FLAT #2 - NIGHT #12A#\n", u"SceneHeading #12A: INT. FLAT #2 - NIGHT"},
    {"a heading below a page break", u"===\nINT. SEA\n", u"PageBreak: ===\nSceneHeading: INT. SEA"},
    {"a heading beside a comment", u"/* x */ INT. SEA /* y */\n",
     u"SceneHeading: {comment /* x */} INT. SEA {comment /* y */}"},
    {"a heading below a comment", u"/* x */\nINT. SEA\n", u"Boneyard:  x \nSceneHeading: INT. SEA"},
    {"forced headings, and dots", u".HILL\n\n..x\n", u"SceneHeading: HILL\nAction: ..x"},
    {"the end of the file ends a heading", u"INT. SEA", u"SceneHeading: INT. SEA"},
    {"the end of the file ends a transition", u"CUT TO:", u"Transition: CUT TO:"},
    {"capitals at the end of the file", u"THE END", u"Action: THE END"},
    {"outline lines are each their own", u"# A\n## B\n= c\n= d\n",
     u"SectionHeading 1: A\nSectionHeading 2: B\nSynopsis: c\nSynopsis: d"},
    {"marks without text", u"#\n\n=\n\n!\n\n[[]]\n\n/**/\n",
     u"Action: #\nAction: =\nAction: !\nAction: {note [[]]}\nAction: {comment /**/}"},
    {"a comment between cue and speech", u"ANNA\n/* x */\nHello.\n", u"Character: ANNA\nBoneyard:  x \nDialogue: Hello."},
    {"a comment in a speech", u"ANNA\nA.\n/* x\n\ny */\nB.\n",
     u"Character: ANNA\nDialogue: A.\nBoneyard:  x||y \nDialogue: B."},
    {"a comment in a line", u"a /* *b */ c*\n", u"Action: a {comment /* *b */} c*"},
    {"comments beside a page break", u"=== /* x */\n/* y */ ===\n",
     u"PageBreak: === {comment /* x */}\nPageBreak: {comment /* y */} ==="},
    {"a mark behind a comment", u"/* x */# A\n\n/* x */ = b\n\n[[n]]!C\n\n/* x */> D <\n",
     u"SectionHeading 1: {comment /* x */}A\nSynopsis: {comment /* x */} b\nAction: {note [[n]]}C\n"
     "Action centred: {comment /* x */}D"},
    {"a note behind a mark", u"> A <[[n]]\n\n# [[n]]\n\nINT. B [[n]]\n",
     u"Action centred: A{note [[n]]}\nSectionHeading 1: {note [[n]]}\nSceneHeading: INT. B {note [[n]]}"},
    {"a line that ends in a note or emphasis", u"a [[n]]\n**b**\nc\n", u"Action: a {note [[n]]}|{b b}{b |}c"},
    {"a lone end of a comment", u"*/ a\n", u"Action: */ a"},
    {"notes", u"[[n]]\n\nShe sits [[check]]. Then up.\n", u"Notes: n\nAction: She sits {note [[check]]}. Then up."},
    {"notes in headings and speeches", u"INT. SEA [[n]]\n\nANNA\nA [[m\no]] b.\n",
     u"SceneHeading: INT. SEA {note [[n]]}\nCharacter: ANNA\nDialogue: A {note [[m|o]]} b."},
    {"a note ends in front of a blank line", u"[[ a\n\nb ]]\n", u"Action: [[ a\nAction: b ]]"},
    {"parentheticals", u"ANNA\n(softly)\nYes (no) yes.\n(a) b (c)\n",
     u"Character: ANNA\nParenthetical: (softly)\nDialogue: Yes (no) yes.\nDialogue: (a) b (c)"},
    {"a line of blanks in a speech", u"ANNA\nA.\n  \nB.\n\n  \nC.\n",
     u"Character: ANNA\nDialogue: A.\nDialogue:   \nDialogue: B.\n-\nAction: C."},
    {"emphasis", u"_a_ *b* **c** ***d*** _e *f* g_\n",
     u"Action: {u a} {i b} {b c} {bi d} {u e }{iu f}{u  g}"},
    {"emphasis in speeches", u"ANNA\n(*softly*)\nI **mean** it.\n",
     u"Character: ANNA\nParenthetical: ({i softly})\nDialogue: I {b mean} it."},
    {"marks that do not pair up", u"5 * 3 * 2\n\nQueen_98\n\n* *\n", u"Action: 5 * 3 * 2\nAction: Queen_98\nAction: * *"},
    {"transitions", u"> FADE OUT.\n\n>x\n\n>\n", u"Transition: FADE OUT.\nTransition: x\nAction: >"},
};

// Rich text of lines "Kind: text", and the script that it becomes with all that there is to tell.
const Row messageRows[] = {
    {"headings and transitions, forced or not", u"SceneHeading: THE SEA\nSceneHeading: INT. SEA\nTransition: CUT TO:\nTransition: x",
     u".THE SEA\n\nINT. SEA\n\nCUT TO:\n\n> x\n"},
    {"action in capitals", u"Action: LOUD\nAction: more", u"LOUD\n\nmore\n"},
    {"action like a section", u"Action: # a", u"!# a\n"},
    {"a speech", u"Character: ANNA\nDialogue: A.\nParenthetical: (b)\nDialogue: C.", u"ANNA\nA.\n(b)\nC.\n"},
    {"typed asterisks", u"Action: *a*", u"*a*\nparagraph 1, Action \"*a*\", has no form in the script and becomes Action \"a\""},
    {"a cue in small letters", u"Action: a\nCharacter: bob\nDialogue: b",
     u"a\n\nbob\nb\nparagraph 2, Character \"bob\", has no form in the script and becomes Action \"bob b\"\n"
     "paragraph 3, Dialogue \"b\", has no form in the script and becomes Action \"bob b\""},
    {"a long speech without a cue", u"Dialogue: 123456789 123456789 123456789 123456789 1",
     u"123456789 123456789 123456789 123456789 1\nparagraph 1, Dialogue \"123456789 123456789 123456789 123456789 ...\", has no form in the script and becomes "
     "Action \"123456789 123456789 123456789 123456789 ...\""},
    {"emphasis in a speech", u"Character: ANNA\nDialogue: <b>A</b>", u"ANNA\n**A**\n"},
    {"emphasis in a heading, once", u"SceneHeading: <b>INT. SEA</b>", u"INT. SEA\nparagraph 1, Scene Heading \"INT. SEA\", loses its emphasis"},
};
// clang-format on

QString listedBlocks(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString kind = Host::recordOf(block).name;
        const bool isEmpty = block.length() == 1;
        QString line = isEmpty ? u"-"_s : kind + u": "_s;
        if (isEmpty && kind == u"PageBreak"_s)
            line = kind + u": ==="_s;
        if (!isEmpty && block.blockFormat().alignment() == Qt::AlignHCenter)
            line += u"centred "_s;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            for (const QChar c : it.fragment().text()) {
                line += c;
                line += format.fontWeight() >= QFont::Bold ? u"b"_s : QString();
                line += format.fontItalic() ? u"i"_s : QString();
                line += format.fontUnderline() ? u"u"_s : QString();
            }
        }
        lines.append(line);
    }
    return lines.join(u'\n');
}

void insert(const QString &kind, const QString &text, const QTextCharFormat &format,
            QTextCursor *cursor)
{
    cursor->insertBlock(ZEMScriptElement::find(Host::records(), kind).blockFormat,
                        QTextCharFormat());
    cursor->insertText(text, format);
}

void removeFirstBlock(QTextDocument *document)
{
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

} // namespace

class ReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data() { addRows(readingRows); }
    void reads();
    void comesBack_data() { addRows(readingRows); }
    void comesBack();
    void madeScripts();
    void examples();
    void htmlInParts();
    void messages_data() { addRows(messageRows); }
    void messages();
    void madeRichText();
    void growth_data();
    void growth();
};

void ReadingTest::reads()
{
    QFETCH(QString, input);
    QTEST(listed(Host::read(input)), "expected");
}

void ReadingTest::comesBack()
{
    QFETCH(QString, input);
    QCOMPARE(comeBack(input), input);
    const QString noLineEnd = input.chopped(input.endsWith(u'\n') ? 1 : 0);
    QCOMPARE(comeBack(noLineEnd), noLineEnd);
}

void ReadingTest::htmlInParts()
{
    // Rich text of more than one part, whose borders come between paragraphs of all kinds.
    QFile file(QFINDTESTDATA("../examples/the-lamp-keeper.fountain"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString script = QString::fromUtf8(file.readAll()).repeated(150);
    QTextDocument document;
    Host::importScript(script, &document);
    QStringList messages;
    QVERIFY(Host::exportHtml(document.toHtml(), &messages) == script);
    QVERIFY(messages.isEmpty());
    // HTML of somebody else is no such rich text.
    QCOMPARE(Host::exportHtml(u"<html><body><p>a</p><p>b</p></body></html>"_s), u"a\n\nb\n"_s);
}

void ReadingTest::madeScripts()
{
    for (quint32 seed = 0; seed < 2000; ++seed) {
        const QString script = madeScript(seed);
        if (comeBack(script) != script) {
            const QString least = shrunk(script);
            qWarning("script %u", seed);
            QCOMPARE(comeBack(least), least);
        }
    }
}

void ReadingTest::examples()
{
    for (const QString &name : {u"the-lamp-keeper"_s, u"two-hander"_s}) {
        QFile file(QStringLiteral(EXAMPLES "/") + name + u".fountain"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString script = QString::fromUtf8(file.readAll());
        QCOMPARE(comeBack(script), script);
    }
}

/// Each paragraph that has no form which reads back is named, and no other.
void ReadingTest::messages()
{
    QFETCH(QString, input);
    QTextDocument document;
    QTextCursor cursor(&document);
    for (const QString &line : input.split(u'\n')) {
        cursor.insertBlock(
            ZEMScriptElement::find(Host::records(), line.section(u": "_s, 0, 0)).blockFormat,
            QTextCharFormat());
        cursor.insertHtml(line.section(u": "_s, 1));
    }
    removeFirstBlock(&document);
    QStringList lines;
    const QString script = Host::exportScript(document, &lines);
    QTEST(script + lines.join(u'\n'), "expected");
}

/// Rich text without any message reads back as it is.
void ReadingTest::madeRichText()
{
    int kept = 0;
    for (quint32 seed = 0; seed < 2000; ++seed) {
        QRandomGenerator random(seed);
        QTextDocument document;
        QTextCursor cursor(&document);
        const int count = random.bounded(1, 5);
        for (int i = 0; i < count; ++i) {
            const auto &records = Host::records();
            const QString kind = records.at(random.bounded(int(records.size()))).name;
            QTextCharFormat format;
            if (random.bounded(3) == 0)
                format.setFontItalic(true);
            insert(kind, madeLine(&random), QTextCharFormat(), &cursor);
            if (random.bounded(4) == 0)
                cursor.insertText(madeLine(&random), format);
        }
        removeFirstBlock(&document);
        QStringList lines;
        const QString script = Host::exportScript(document, &lines);
        if (!lines.isEmpty())
            continue;
        ++kept;
        QTextDocument again;
        Host::importScript(script, &again);
        QVERIFY2(listedBlocks(again) == listedBlocks(document),
                 qPrintable(u"seed %1: \"%2\"\nfrom\n%3\nreads back as\n%4"_s.arg(
                     QString::number(seed), script, listedBlocks(document), listedBlocks(again))));
    }
    QVERIFY(kept > 200);
}

void ReadingTest::growth_data()
{
    QTest::addColumn<QString>("script");
    const int count = 50000;
    QTest::newRow("notes that are never closed") << u"[[ x "_s.repeated(count);
    QTest::newRow("comments that are never closed") << u"/* x "_s.repeated(count);
    QTest::newRow("marks of emphasis") << u"*a _b **c "_s.repeated(count);
    QTest::newRow("lines of one paragraph") << u"She sits.\n"_s.repeated(count);
    QTest::newRow("lines of a title page") << u"Title: a\n b\n"_s.repeated(count);
    QTest::newRow("comments below a line") << u"A\n"_s + u"/* x */\n"_s.repeated(count);
    QTest::newRow("cues above comments") << u"ANNA\n/* x */\n\n"_s.repeated(count);
    QTest::newRow("parentheses") << u"ANNA\n"_s + u"("_s.repeated(count);
    QTest::newRow("numbers of a heading") << u"INT. A "_s + u"#1"_s.repeated(count) + u"#"_s;
}

/// Reading takes time in proportion to the length: none of these takes a second.
void ReadingTest::growth()
{
    QFETCH(QString, script);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(Host::written(Host::read(script)) == script);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(ReadingTest)
#include "tst_reading.moc"
