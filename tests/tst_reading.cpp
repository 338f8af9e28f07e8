// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "files.h"
#include "fuzz/scripts.h"
#include "host/reading.h"
#include "host/writing.h"
#include "rows.h"

namespace {

using Host::Paragraph;
using Host::Stretch;

/// A stretch as its text, in braces with its look if it has one: "{b bold}", "{note [[n]]}".
QString lookOf(const Stretch &stretch)
{
    QString look = u"b"_s.left(stretch.bold) + u"i"_s.left(stretch.italic);
    look += u"u"_s.left(stretch.underline);
    if (stretch.kind != Stretch::Text)
        look += stretch.kind == Stretch::Note ? u"note"_s : u"comment"_s;
    const QString text = QString(stretch.text).replace(QChar(QChar::LineSeparator), u'|');
    return look.isEmpty() ? text : u"{%1 %2}"_s.arg(look, text);
}

/// A line for each paragraph: kind, what else there is to tell, text. Blank lines are "-".
QString listed(const QVector<Paragraph> &script)
{
    QStringList lines;
    for (const Paragraph &p : script) {
        QString line = p.titlePage ? u"Title"_s : QFnElement::toString(p.type).remove(u' ');
        line += u" centred"_s.repeated(p.centred);
        if (p.depth > 0)
            line += u" %1"_s.arg(p.depth);
        if (!p.sceneNumber.isEmpty())
            line += u" #"_s + p.sceneNumber;
        line += u": "_s;
        for (const Stretch &stretch : p.stretches)
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
    {"the title page", u"Title: The *Sea*\nAuthor:\nContact:\n    a\n    b\n\nTitle: x\n", u"Title: Title: The {i Sea}\nTitle: Author:\nTitle: Contact:|    a|    b\nAction: Title: x"},
    {"keys further down are text", u"A\n\nNotes about the sea\n\nANNA\nTitle fights are rigged.\n\nAUTHOR\nNo.\n", u"Action: A\nAction: Notes about the sea\nCharacter: ANNA\nDialogue: Title fights are rigged.\nCharacter: AUTHOR\nDialogue: No."},
    {"a heading with a number", u"INT. FLAT #2 - NIGHT #12A#\n", u"SceneHeading #12A: INT. FLAT #2 - NIGHT"},
    {"a heading below a page break", u"===\nINT. SEA\n", u"PageBreak: ===\nSceneHeading: INT. SEA"},
    {"a heading beside a comment", u"/* x */ INT. SEA /* y */\n", u"SceneHeading: {comment /* x */} INT. SEA {comment /* y */}"},
    {"a heading below a comment", u"/* x */\nINT. SEA\n", u"Boneyard:  x \nSceneHeading: INT. SEA"},
    {"forced headings, and dots", u".HILL\n\n..x\n", u"SceneHeading: HILL\nAction: ..x"},
    {"the end of the file ends a heading", u"INT. SEA", u"SceneHeading: INT. SEA"},
    {"the end of the file ends a transition", u"CUT TO:", u"Transition: CUT TO:"},
    {"capitals at the end of the file", u"THE END", u"Action: THE END"},
    {"outline lines are each their own", u"# A\n## B\n= c\n= d\n", u"SectionHeading 1: A\nSectionHeading 2: B\nSynopsis: c\nSynopsis: d"},
    {"marks without text", u"#\n\n=\n\n!\n\n[[]]\n\n/**/\n", u"Action: #\nAction: =\nAction: !\nAction: {note [[]]}\nAction: {comment /**/}"},
    {"a comment between cue and speech", u"ANNA\n/* x */\nHello.\n", u"Character: ANNA\nBoneyard:  x \nDialogue: Hello."},
    {"a comment in a speech", u"ANNA\nA.\n/* x\n\ny */\nB.\n", u"Character: ANNA\nDialogue: A.\nBoneyard:  x||y \nDialogue: B."},
    {"a comment in a line", u"a /* *b */ c*\n", u"Action: a {comment /* *b */} c*"},
    {"comments beside a page break", u"=== /* x */\n/* y */ ===\n", u"PageBreak: === {comment /* x */}\nPageBreak: {comment /* y */} ==="},
    {"a mark behind a comment", u"/* x */# A\n\n/* x */ = b\n\n[[n]]!C\n\n/* x */> D <\n", u"SectionHeading 1: {comment /* x */}A\nSynopsis: {comment /* x */} b\nAction: {note [[n]]}C\nAction centred: {comment /* x */}D"},
    {"a note behind a mark", u"> A <[[n]]\n\n# [[n]]\n\nINT. B [[n]]\n", u"Action centred: A{note [[n]]}\nSectionHeading 1: {note [[n]]}\nSceneHeading: INT. B {note [[n]]}"},
    {"a line that ends in a note or emphasis", u"a [[n]]\n**b**\nc\n", u"Action: a {note [[n]]}|{b b}{b |}c"},
    {"a lone end of a comment", u"*/ a\n", u"Action: */ a"},
    {"notes", u"[[n]]\n\nShe sits [[check]]. Then up.\n", u"Notes: n\nAction: She sits {note [[check]]}. Then up."},
    {"notes in headings and speeches", u"INT. SEA [[n]]\n\nANNA\nA [[m\no]] b.\n", u"SceneHeading: INT. SEA {note [[n]]}\nCharacter: ANNA\nDialogue: A {note [[m|o]]} b."},
    {"a note ends in front of a blank line", u"[[ a\n\nb ]]\n", u"Action: [[ a\nAction: b ]]"},
    {"parentheticals", u"ANNA\n(softly)\nYes (no) yes.\n(a) b (c)\n", u"Character: ANNA\nParenthetical: (softly)\nDialogue: Yes (no) yes.\nDialogue: (a) b (c)"},
    {"a line of blanks in a speech", u"ANNA\nA.\n  \nB.\n\n  \nC.\n", u"Character: ANNA\nDialogue: A.\nDialogue:   \nDialogue: B.\n-\nAction: C."},
    {"emphasis", u"_a_ *b* **c** ***d*** _e *f* g_\n", u"Action: {u a} {i b} {b c} {bi d} {u e }{iu f}{u  g}"},
    {"emphasis in speeches", u"ANNA\n(*softly*)\nI **mean** it.\n", u"Character: ANNA\nParenthetical: ({i softly})\nDialogue: I {b mean} it."},
    {"marks that do not pair up", u"5 * 3 * 2\n\nQueen_98\n\n* *\n", u"Action: 5 * 3 * 2\nAction: Queen_98\nAction: * *"},
    {"transitions", u"> FADE OUT.\n\n>x\n\n>\n", u"Transition: FADE OUT.\nTransition: x\nAction: >"},
};

// Rich text of lines "Kind: text", and the script that it becomes with all that there is to tell.
const Row messageRows[] = {
    {"headings and transitions, forced or not", u"SceneHeading: THE SEA\nSceneHeading: INT. SEA\nTransition: CUT TO:\nTransition: x", u".THE SEA\n\nINT. SEA\n\nCUT TO:\n\n> x\n"},
    {"action in capitals", u"Action: LOUD\nAction: more", u"LOUD\n\nmore\n"},
    {"action like a section", u"Action: # a", u"!# a\n"},
    {"a speech", u"Character: ANNA\nDialogue: A.\nParenthetical: (b)\nDialogue: C.", u"ANNA\nA.\n(b)\nC.\n"},
    {"typed asterisks", u"Action: *a*", u"*a*\nparagraph 1, Action \"*a*\", has no form in the script and becomes Action \"a\""},
    {"a cue in small letters", u"Action: a\nCharacter: bob\nDialogue: b", u"a\n\nbob\nb\nparagraph 2, Character \"bob\", has no form in the script and becomes Action \"bob b\"\nparagraph 3, Dialogue \"b\", has no form in the script and becomes Action \"bob b\""},
    {"a long speech without a cue", u"Dialogue: 123456789 123456789 123456789 123456789 1", u"123456789 123456789 123456789 123456789 1\nparagraph 1, Dialogue \"123456789 123456789 123456789 123456789 ...\", has no form in the script and becomes Action \"123456789 123456789 123456789 123456789 ...\""},
    {"emphasis in a speech", u"Character: ANNA\nDialogue: <b>A</b>", u"ANNA\n**A**\n"},
    {"emphasis in a heading, once", u"SceneHeading: <b>INT. SEA</b>", u"INT. SEA\nparagraph 1, Scene Heading \"INT. SEA\", loses its emphasis"},
};

// What stands in front, and what is repeated behind it.
const std::pair<std::u16string_view, std::u16string_view> longScripts[] = {
    {u"", u"[[ x "}, {u"", u"/* x "}, {u"", u"*a _b **c "}, {u"", u"She sits.\n"}, {u"", u"Title: a\n b\n"},
    {u"A\n", u"/* x */\n"}, {u"", u"ANNA\n/* x */\n\n"}, {u"ANNA\n", u"("}, {u"INT. A ", u"#1"},
};
// clang-format on

} // namespace

class ReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data() { addRows(readingRows); }
    void reads()
    {
        check([](const QString &script) { return listed(Host::read(script)); });
    }

    void comesBack_data() { addRows(readingRows); }
    void comesBack()
    {
        QFETCH(QString, input);
        QCOMPARE(comeBack(input), input);
        const QString noLineEnd = input.chopped(input.endsWith(u'\n') ? 1 : 0);
        QCOMPARE(comeBack(noLineEnd), noLineEnd);
    }

    void madeScriptsComeBack()
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

    /// Rich text without any message reads back as it is.
    void madeRichTextComesBack()
    {
        int told = 0;
        for (quint32 seed = 0; seed < 2000; ++seed) {
            bool isTold = false;
            QCOMPARE(silentChange(seed, &isTold), QString());
            told += isTold ? 1 : 0;
        }
        QVERIFY(told < 1800);
    }

    void examplesComeBack()
    {
        for (const char *path :
             {EXAMPLES "/the-lamp-keeper.fountain", EXAMPLES "/two-hander.fountain"}) {
            const QString script = QString::fromUtf8(contents(QString::fromUtf8(path)));
            QVERIFY(!script.isEmpty());
            QCOMPARE(comeBack(script), script);
            // Rich text of more than one part, whose borders come between paragraphs of all kinds.
            const QString longer = script.repeated(150);
            QTextDocument document;
            Host::importScript(longer, &document);
            QStringList messages;
            QVERIFY(Host::exportHtml(document.toHtml(), &messages) == longer);
            QCOMPARE(messages, QStringList());
        }
        // HTML of somebody else has no such parts.
        QCOMPARE(Host::exportHtml(u"<html><body><p>a</p><p>b</p></body></html>"_s), u"a\n\nb\n"_s);
    }

    void exportNamesWhatHasNoForm_data() { addRows(messageRows); }
    void exportNamesWhatHasNoForm()
    {
        check([](const QString &paragraphs) {
            QTextDocument document;
            QTextCursor cursor(&document);
            for (const QString &line : paragraphs.split(u'\n')) {
                const QString kind = line.section(u": "_s, 0, 0);
                cursor.insertBlock(ZEMScriptElement::find(Host::records(), kind).blockFormat,
                                   QTextCharFormat());
                cursor.insertHtml(line.section(u": "_s, 1));
            }
            cursor.movePosition(QTextCursor::Start);
            cursor.deleteChar(); // the block that each document begins with
            QStringList messages;
            const QString script = Host::exportScript(document, &messages);
            return script + messages.join(u'\n');
        });
    }

    /// Reading takes time in proportion to the length: none of these takes a second.
    void longScriptsAreReadInTime()
    {
        for (const auto &parts : longScripts) {
            const QString script =
                textOf(parts.first) + textOf(parts.second).repeated(50000) + u'#';
            QElapsedTimer timer;
            timer.start();
            QVERIFY(Host::written(Host::read(script)) == script);
            QVERIFY2(timer.elapsed() < 5000, qPrintable(textOf(parts.second)));
        }
    }
};

QTEST_MAIN(ReadingTest)
#include "tst_reading.moc"
