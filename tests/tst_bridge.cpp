// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "bridge/ZemFountain.h"

#include "dump.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

namespace {

/// A record found by the block has no blank in its name, one found by the type has.
QList<ZEMScriptElement> records()
{
    ZEMScriptElement byName = recordOf(u"x a8 u3"_s);
    byName.name = u"Scene Heading"_s;
    return {recordOf(u"Character a2 w25 i1"_s), recordOf(u"Dialogue u2"_s),
            recordOf(u"SceneHeading a8 w0"_s), byName};
}

/// A line for each block: text, formats of the block, formats of its text.
QString dump(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        lines += block.text() + u'|' + dump(block.blockFormat()) + u'|' + dump(block.charFormat());
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            if (it.fragment().charFormat() != block.charFormat())
                lines.last() += u'|' + it.fragment().text();
        }
    }
    return lines.join(u'\n');
}

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
    ZemFountain::toFountainDocument(document, scriptElements, &target, nullptr);
    return dump(target);
}

QString exportedText(const QString &formats)
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.setBlockFormat(recordOf(formats).blockFormat);
    cursor.insertText(u"x"_s, recordOf(formats).charFormat);
    return exported(document, {});
}

// clang-format off
const Row renderRows[] = {
    {"first element takes the empty block", u"Action||x\nNotes|biuc|y", u"x|a1|w0\ny|a4|w75 i1 u1"},
    {"record beats style", u"Character|bc|x\nDialogue|b|y", u"x|a2|w25 i1\ny|a1|w75 u2"},
    {"record serves again", u"Character||x\nCharacter||y\nNotes||z", u"x|a2|w25 i1\ny|a2|w25 i1\nz|a1|w0"},
    {"missing record is looked up again", u"Notes||x\nNotes||y\nDialogue||z", u"x|a1|w0\ny|a1|w0\nz|a1|w0 u2"},
    {"heading name has a blank", u"SceneHeading||x", u"x|a8|w0 u3"},
    {"parentheses come back", u"Parenthetical|i|\nParenthetical||x", u"()|a1|w0 i1\n(x)|a1|w0"},
    {"line feeds make blocks", u"Action|bc|x\\n\\ny", u"x|a4|w75\n|a4|w75\ny|a4|w75"},
    {"empty elements share the first block", u"Action|bc|\n-\nAction|i|x\n-", u"x|a1|w0 i1\n|a1|w0"},
};

const Row exportRows[] = {
    {"weight 74 is not bold", u" a4 w74", u"Undefined|c|x"},
    {"weight 75 is bold", u" i0 u0 w75", u"Undefined|b|x"},
    {"any underline counts", u" i1 u6 w99", u"Undefined|biu|x"},
    {"centred among other flags", u" a132", u"Undefined|c|x"},
    {"right and justified are left", u" a10", u"Undefined||x"},
};
// clang-format on

} // namespace

class BridgeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rendering_data() { addRows(renderRows); }
    void rendering() { check(rendered); }
    void exporting_data() { addRows(exportRows); }
    void exporting() { check(exportedText); }

    void renderingAddsBehindTheText()
    {
        QTextDocument document;
        document.setPlainText(u"old"_s);
        QFnDocument source(nullptr);
        source.titlePage = {{u"A"_s, u"1\n2"_s}, {u"B"_s, u"3"_s}};
        ZEMFountainDocumentRenderer renderer;
        QVERIFY(renderer.render(source, &document) && !renderer.render(source, nullptr));
        const QString text = document.toPlainText(); // in either order
        QVERIFY(text == u"oldA:1\n2B:3\n"_s || text == u"oldB:3A:1\n2\n"_s);
        source.titlePage.clear();
        appendElements(u"Action||x\n||y"_s, &source);
        source.elements.last()->type = QFnElement::Type(13);
        QVERIFY(renderer.render(source, &document) && renderer.render(source, &document));
        QCOMPARE(document.toPlainText(), text + u"\nx\ny\nx\ny"_s);
    }

    void insertionsAreSeparateEdits()
    {
        QTextDocument document(u"old"_s), literal(u"old"_s);
        QFnDocument source(nullptr);
        appendElements(u"Parenthetical|b|a"_s, &source);
        ZEMFountainDocumentRenderer().render(source, &document);
        const QTextCharFormat format = source.elements.first()->style.toTextFormat();
        QTextCursor cursor(&literal);
        cursor.movePosition(QTextCursor::End);
        cursor.insertBlock(QFnStyle().toBlockFormat(), format);
        for (const QString &text : {u"("_s, u"a"_s, u")"_s})
            cursor.insertText(text, format);
        QCOMPARE(document.availableUndoSteps(), literal.availableUndoSteps());
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
        cursor.insertText(u"d"_s, recordOf(u" w75"_s).charFormat);
        QCOMPARE(exported(document, list), u"Scene Heading|u|c\nScene Heading|b|d\nCharacter|i|A\n"
                                           u"Dialogue|u|b\nUndefined||"_s);
        list.removeAt(2); // the record that is left has no type
        QVERIFY(exported(document, list).startsWith(u"Undefined|u|c\nUndefined|b|d\n"_s));
    }

    void writingAFile()
    {
        const QTemporaryDir dir;
        QFile file(dir.filePath(u"a.fountain"_s));
        const QTextDocument document(u"a\n\nb"_s);
        QString error;
        QVERIFY(!ZemFountain::writeFile(dir.path(), document, records(), &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(ZemFountain::writeFile(file.fileName(), document, records(), &error));
        QVERIFY(error.isEmpty() && file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("\na\n\nb"));
    }
};

QTEST_GUILESS_MAIN(BridgeTest)
#include "tst_bridge.moc"
