// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "bridge/ZemFountain.h"
#include "parser/qfnfastparser.h"

#include "dump.h"
#include "elements.h"
#include "files.h"
#include "formats.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QTextCursor>

namespace {

/// A record found by the block has no blank in its name, one found by the type has.
QList<ZEMScriptElement> records()
{
    return recordsOf(u"Character=a2 w25 i1|Dialogue=u2|SceneHeading=a8 w0|Scene Heading=a8 u3"_s);
}

/// The blocks that the elements give.
QString rendered(const QString &lines)
{
    QFnDocument source(nullptr);
    appendElements(lines, &source);
    QTextDocument document;
    ZEMFountainDocumentRenderer renderer;
    renderer.scriptElements = records();
    return renderer.render(source, &document) ? dump(document) : u"failed"_s;
}

QString exported(const QTextDocument &document, const QList<ZEMScriptElement> &scriptElements)
{
    QFnDocument target(nullptr); // what it holds goes
    target.titlePage.insert(u"Title"_s, u"left"_s);
    target.elements += new QFnElement;
    const bool ok = ZemFountain::toFountainDocument(document, scriptElements, &target, nullptr);
    return ok ? dump(target) : u"failed"_s;
}

QString exportedText(const QString &formats)
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.setBlockFormat(recordOf(formats).blockFormat);
    cursor.insertText(u"x"_s, recordOf(formats).charFormat);
    return exported(document, {});
}

// A record for each type, told by its margin, under the names that both roads look for.
const QString recordOfEachType =
    u"Action=m1|Boneyard=m2|Character=m3|Notes=m4|Dialogue=m5|PageBreak=m6|Parenthetical=m7|"
    "SceneHeading=m8|Scene Heading=m8|SectionHeading=m9|Section Heading=m9|Synopsis=m10|"
    "Transition=m11|General=m12"_s;

/// What the road there and back makes of a script: the blocks of the import, the text that the
/// export writes, and what that reads back as.
QString comeBack(const QString &script)
{
    QTextDocument document;
    QList<ZEMScriptElement> list = recordsOf(recordOfEachType);
    ZemFountain::parseText(script, &document, &list, nullptr);

    const QTemporaryDir dir;
    const QString path = dir.filePath(u"back.fountain"_s);
    ZemFountain::writeFile(path, document, list, nullptr);
    const QString written = QString::fromUtf8(contents(path));
    QFnFastParser parser(nullptr);
    parser.parse(written);
    return escaped(document.toPlainText()) + u'\n' + escaped(written) + u'\n'
           + dump(*parser.document);
}

} // namespace

class BridgeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rendering_data() { addCases({u"bridge-rendering"_s}); }
    void rendering() { check(rendered); }
    void exporting_data() { addCases({u"bridge-exporting"_s}); }
    void exporting() { check(exportedText); }
    void thereAndBack_data() { addCases({u"bridge-road"_s}); }
    void thereAndBack() { check(comeBack); }

    void renderingAddsBehindTheText()
    {
        QTextDocument document(u"old"_s);
        QFnDocument source(nullptr);
        ZEMFountainDocumentRenderer renderer;
        appendElements(u"Action||x\n||y"_s, &source);
        QVERIFY(!renderer.render(source, nullptr));
        QVERIFY(renderer.render(source, &document) && renderer.render(source, &document));
        QCOMPARE(document.toPlainText(), u"old\nx\ny\nx\ny"_s);
    }

    void insertionsAreSeparateEdits()
    {
        // Title-page entries with each line end that a text can have, among entries without one.
        for (const QString &value :
             {u"1"_s, u"1\n2"_s, u"\r1"_s, u"1\u2029"_s, u"\ufdd0"_s, u"\ufdd1"_s}) {
            QTextDocument document(u"old"_s), literal(u"old"_s);
            QFnDocument source(nullptr);
            for (const QString &key : {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s})
                source.titlePage.insert(key, key < u"C"_s ? value : u"3"_s);
            appendElements(u"Parenthetical|b|a"_s, &source);
            ZEMFountainDocumentRenderer().render(source, &document);

            QTextCursor cursor(&literal);
            cursor.movePosition(QTextCursor::End);
            for (auto it = source.titlePage.cbegin(); it != source.titlePage.cend(); ++it)
                cursor.insertText(it.key() + u':' + it.value());
            cursor.insertBlock();
            const QTextCharFormat format = source.elements.first()->style.toTextFormat();
            cursor.insertBlock(QFnStyle().toBlockFormat(), format);
            for (const QString &text : {u"("_s, u"a"_s, u")"_s})
                cursor.insertText(text, format);
            QCOMPARE(dump(document), dump(literal));
            QCOMPARE(document.availableUndoSteps(), literal.availableUndoSteps());
        }
    }

    void titlePageIsFewInsertions()
    {
        // Qt lays a block out anew at each insertion into it.
        QTextDocument richText;
        ZemFountain::parseText(u"Title: a\n"_s.repeated(100) + u'\n', &richText, nullptr, nullptr);
        QCOMPARE(richText.firstBlock().text(), u"Title:a"_s.repeated(100));
        QVERIFY2(richText.revision() < 10, qPrintable(QString::number(richText.revision())));
    }

    void parsingText()
    {
        QTextDocument document;
        QString error = u"kept"_s;
        QVERIFY(!ZemFountain::parseText(u"A\n"_s, nullptr, nullptr, &error));
        QVERIFY(ZemFountain::parseText(QString(), &document, nullptr, nullptr));
        QCOMPARE(dump(document), u"|a1|w0"_s);
        auto list = records();
        QVERIFY(
            ZemFountain::parseText(u"A\r\n**b\r\n\r\n>c<\r\n\r\nd"_s, &document, &list, &error));
        // The carriage return in front of the line feed that is cut stays, and makes a block.
        QCOMPARE(dump(document), u"A|a2|w25 i1\n**b|a1|w0 u2\nc|a4|w0\n|a4|w0\nd|a1|w0"_s);
        QCOMPARE(error, u"kept"_s);
    }

    void fragmentsBecomeElements()
    {
        QTextDocument document;
        QCOMPARE(exported(document, records()), u"Undefined||"_s);
        auto list = records();
        ZemFountain::parseText(u".c\n\nA\nb\n"_s, &document, &list, nullptr);
        QTextCursor cursor(&document);
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.insertText(u"d"_s, recordOf(u"=w75"_s).charFormat);
        cursor.setBlockCharFormat(recordOf(u"=w0 u3"_s).charFormat);
        QCOMPARE(exported(document, list), u"Scene Heading|u|c\nScene Heading|b|d\nCharacter|i|A\n"
                                           u"Dialogue|u|b\nUndefined||"_s);
        list.removeAt(2); // the record that is left has no type
        QVERIFY(exported(document, list).startsWith(u"Undefined|u|c\nUndefined|b|d\n"_s));
    }

    void otherFormatsHaveNoEmphasis()
    {
        QTextCharFormat format;
        static_cast<QTextFormat &>(format) = QTextFormat(QTextFormat::UserFormat);
        format.setProperty(QTextFormat::FontItalic, true);
        QTextDocument document;
        QTextCursor(&document).insertText(u"x"_s, format);
        QCOMPARE(exported(document, {}), u"Undefined||x"_s);
    }

    void writingAFile()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath(u"a.fountain"_s);
        const QTextDocument document(u"a\n\nb"_s);
        QString error;
        QVERIFY(!ZemFountain::writeFile(dir.path(), document, records(), &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(ZemFountain::writeFile(path, document, records(), &error));
        QCOMPARE(error, QString());
        QCOMPARE(contents(path), QByteArray("\na\n\nb"));
    }
};

QTEST_GUILESS_MAIN(BridgeTest)
#include "tst_bridge.moc"
