// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "base/ZEMScriptElement.h"

#include "formats.h"

#include <QtGui/QTextCursor>

namespace {

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
    void recordOfABlock_data() { addCases({u"base-blocks"_s}); }
    void recordOfABlock() { check(found); }

    void recordOfAName()
    {
        const QList<ZEMScriptElement> records = recordsOf(u"=i1|A=w75|A=i1|B=u1"_s);
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
