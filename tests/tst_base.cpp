// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "base/ZEMScriptElement.h"

#include "dump.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

using Records = QList<ZEMScriptElement>;

namespace {

// Records, and the name of the one to which a block with the formats "a4 w75 i1" belongs.
const Row blockRows[] = {
    {"formats are all in the block", u"A a4 w75", u"A"},
    {"character format alone", u"A i1", u"A"},
    {"another value", u"A a2 w75 i1|B a4 w25", u""},
    {"a property that the block lacks", u"A a4 u1|B u0", u""},
    {"most properties in both formats together", u"A w75 i1|B a4|C a4 w75 i1", u"C"},
    {"more properties that do not fit", u"A a2 w75 i1|B i1", u"B"},
    {"of equals the first", u"A a4 i1|B w75 i1|C a4 w75", u"A"},
    {"another left margin", u"A m9|B a4", u"B"},
    {"no properties", u"A|B a4", u"B"},
    {"no name", u" a4 w75 i1|B a4", u"B"},
};

QString found(const QString &lines)
{
    Records records;
    for (const QString &line : lines.split(u'|'))
        records += recordOf(line);
    const ZEMScriptElement formats = recordOf(u" a4 w75 i1"_s);
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.setBlockFormat(formats.blockFormat);
    cursor.setBlockCharFormat(formats.charFormat);
    cursor.insertText(u"x"_s, QTextCharFormat()); // the format of the text does not count
    return ZEMScriptElement::find(records, document.begin()).name;
}

} // namespace

class BaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void byName()
    {
        const Records records{recordOf(u" a4"_s), recordOf(u"A w75"_s), recordOf(u"A i1"_s)};
        QCOMPARE(ZEMScriptElement::find(records, u"A"_s).charFormat, records.at(1).charFormat);
        QCOMPARE(ZEMScriptElement::find(records, u"a"_s).name, QString());
        QVERIFY(ZEMScriptElement::find(records, QString()).blockFormat.isEmpty());
    }

    void nearlyEqualIsAnotherFormat()
    {
        ZEMScriptElement record = recordOf(u"A"_s);
        record.blockFormat.setTopMargin(0.3);
        QTextBlockFormat format;
        format.setTopMargin(0.1 + 0.2);
        QTextDocument document;
        QTextCursor(&document).setBlockFormat(format);
        QCOMPARE(ZEMScriptElement::find({record}, document.begin()).name, QString());
        QTextCursor(&document).setBlockFormat(record.blockFormat);
        QCOMPARE(ZEMScriptElement::find({record}, document.begin()).name, record.name);
    }

    void byBlock_data() { addRows(blockRows); }
    void byBlock() { check(found); }
};

QTEST_GUILESS_MAIN(BaseTest)
#include "tst_base.moc"
