// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"

class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typesAndNames()
    {
        const QString names = u",Undefined,Action,Boneyard,Character,Notes,Dialogue,PageBreak,"
                              u"Parenthetical,Scene Heading,Section Heading,Synopsis,Transition,"
                              u"General,action, Action,Nonsense"_s;
        int type = -1;
        for (const QString &name : names.split(u',')) {
            QCOMPARE(QFnElement::toString(QFnElement::Type(type)), type > 12 ? QString() : name);
            const bool known = type > 0 && type <= 12 && !name.contains(u' ');
            QCOMPARE(int(QFnElement::toElementType(name)), known ? type : 0);
            ++type;
        }
        QCOMPARE(QFnElement::toElementType(u"SceneHeading"_s), QFnElement::SceneHeading);
        QCOMPARE(QFnElement::toElementType(u"SectionHeading"_s), QFnElement::SectionHeading);
    }

    void documentOwnsItsElements()
    {
        QObject parent;
        auto *document = new QFnDocument(&parent); // what is not deleted shows as a leak
        document->titlePage.insert(u"Title"_s, u"A"_s);
        document->elements << new QFnElement << nullptr << new QFnElement;
        document->clearContents();
        QCOMPARE(dump(*document), u"@Title|A"_s);
        document->clear();
        QCOMPARE(dump(*document), QString());
        document->elements << nullptr << new QFnElement;
    }

    void styleGivesFormats()
    {
        QFnStyle style;
        QCOMPARE(dump(style.toTextFormat()), u"w0"_s);
        QCOMPARE(dump(style.toBlockFormat()), u"a1"_s);
        style = elementOf(u"Action|biuc|"_s).style;
        QCOMPARE(dump(style.toTextFormat()), u"w75 i1 u1"_s);
        QCOMPARE(dump(style.toBlockFormat()), u"a4"_s);
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
