// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "base/ZEMScriptElement.h"

#include "formats.h"

#include <QtGui/QTextCursor>

namespace {

// The formats of a block and records; the name of the one to which the block belongs.
const Row blockRows[] = {
    {"formats are all in the block", u"=a4 m2 w75 i1|A=a4 w75", u"A"},
    {"character format alone", u"=a4 w75 i1|A=i1", u"A"},
    {"block format alone", u"=a4 w75|A=a4", u"A"},
    {"another value", u"=a4 w75 i1|A=a2 w75 i1|B=a4 w25", u""},
    {"value of another type", u"=a4|A=A4", u""},
    {"a property that the block lacks", u"=a4|A=a4 u1", u""},
    {"0 is not a property that the block lacks", u"=a4|A=a4 u0|B=m0", u""},
    {"most properties in both formats together", u"=a4 w75 i1|A=w75 i1|B=a4|C=a4 w75 i1", u"C"},
    {"more properties that do not fit", u"=a4 w75 i1|A=a2 w75 i1|B=i1", u"B"},
    {"of equals the first", u"=a4 w75 i1|A=a4 i1|B=w75 i1|C=a4 w75", u"A"},
    {"left margins", u"=m2 a4|A=m1 a4|B=m0 a4|C=m2|D=m3", u"C"},
    {"record without a left margin", u"=m2 a4|A=a4", u"A"},
    {"no properties", u"=a4|A|B=a4", u"B"},
    {"no properties on both sides", u"|A", u""},
    {"no name", u"=a4 w75 i1|=a4 w75 i1|B=a4", u"B"},
};

QString found(const QString &lines)
{
    QList<ZEMScriptElement> records = recordsOf(lines);
    const ZEMScriptElement formats = records.takeFirst();
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
    void recordOfABlock_data() { addRows(blockRows); }
    void recordOfABlock() { check(found); }

    void recordOfAName()
    {
        const QList<ZEMScriptElement> records = recordsOf(u"=a4|A=w75|A=i1|B=u1"_s);
        QStringList formats;
        for (const QString &name : {u"A"_s, u"B"_s, u"a"_s, QString()})
            formats += dump(ZEMScriptElement::find(records, name).charFormat);
        QCOMPARE(formats.join(u'|'), u"w75|u1||"_s);
    }

    void defaultRecordIsEmpty()
    {
        const ZEMScriptElement r;
        QVERIFY(r.name.isEmpty() && r.blockFormat.isEmpty() && r.charFormat.isEmpty());
        QVERIFY(r.carriedShort == 0 && r.carriedNumber == 0 && r.carriedNumber1 == 0);
        QVERIFY(r.carriedNumber2 == 0 && r.carriedReal1 == 0 && r.carriedReal2 == 0);
        QCOMPARE(int(ZEMCompletion().carriedByte), 0);
    }

    void nearlyEqualIsAnotherFormat()
    {
        ZEMScriptElement record = recordOf(u"A"_s);
        for (const QVariant &value :
             {QVariant(0.1 + 0.2), QVariant(0.3), QVariant(u"a"_s), QVariant(u"b"_s)}) {
            QTextBlockFormat format;
            format.setProperty(QTextFormat::UserProperty, value);
            QTextDocument document;
            QTextCursor(&document).setBlockFormat(format);
            QCOMPARE(ZEMScriptElement::find({record}, document.begin()).name, QString());
            record.blockFormat = format;
            QCOMPARE(ZEMScriptElement::find({record}, document.begin()).name, record.name);
        }
    }
};

QTEST_GUILESS_MAIN(BaseTest)
#include "tst_base.moc"
