// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"
#include "elements.h"
#include "formats.h"

namespace {

struct TypeRow
{
    int type;
    std::u16string_view given, accepted; ///< the names that it gives and that it is known by
};

// The two headings give a name with a blank and are known by one without.
// clang-format off
constexpr TypeRow typeRows[] = {
    {0, u"Undefined", u"Undefined"},              {1, u"Action", u"Action"},
    {2, u"Boneyard", u"Boneyard"},                {3, u"Character", u"Character"},
    {4, u"Notes", u"Notes"},                      {5, u"Dialogue", u"Dialogue"},
    {6, u"PageBreak", u"PageBreak"},              {7, u"Parenthetical", u"Parenthetical"},
    {8, u"Scene Heading", u"SceneHeading"},       {9, u"Section Heading", u"SectionHeading"},
    {10, u"Synopsis", u"Synopsis"},               {11, u"Transition", u"Transition"},
    {12, u"General", u"General"},
};
// clang-format on

// The style of an element and its two formats.
const Row styleRows[] = {
    {"plain", u"||", u"w0, a1"},      {"bold", u"|b|", u"w75, a1"},
    {"italic", u"|i|", u"w0 i1, a1"}, {"underlined", u"|u|", u"w0 u1, a1"},
    {"centred", u"|c|", u"w0, a4"},   {"any other alignment", u"|130|", u"w0, a130"},
};

} // namespace

class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typesHaveNames()
    {
        for (const TypeRow &row : typeRows) {
            QCOMPARE(QFnElement::toString(QFnElement::Type(row.type)), textOf(row.given));
            QCOMPARE(int(QFnElement::toElementType(textOf(row.accepted))), row.type);
        }
        QCOMPARE(QFnElement::toString(QFnElement::Type(-1)), QString());
        QCOMPARE(QFnElement::toString(QFnElement::Type(13)), QString());
        for (const QString &name : {u""_s, u"Scene Heading"_s, u"Section Heading"_s, u"action"_s,
                                    u" Action"_s, u"Nonsense"_s})
            QCOMPARE(QFnElement::toElementType(name), QFnElement::Undefined);
    }

    void styleGivesFormats_data() { addRows(styleRows); }
    void styleGivesFormats()
    {
        check([](const QString &line) {
            const QFnStyle style = elementOf(line).style;
            return dump(style.toTextFormat()) + u", "_s + dump(style.toBlockFormat());
        });
    }

    void clearedElementIsLikeNew()
    {
        QFnElement element = elementOf(u"SceneHeading|biuc|x"_s);
        element.sceneNumber = u"1"_s;
        element.sectionDepth = 2;
        QCOMPARE(dump(element), u"Scene Heading|biuc|x|#1|depth 2"_s);
        element.clear();
        QCOMPARE(dump(element), u"Undefined||"_s);
        QCOMPARE(dump(QFnElement()), u"Undefined||"_s);
    }

    void documentOwnsItsElements()
    {
        QObject parent;
        auto *document = new QFnDocument(&parent);
        QCOMPARE(qobject_cast<QFnDocument *>(parent.children().value(0)), document);
        QCOMPARE(document->metaObject()->className(), "QFnDocument");
        document->titlePage.insert(u"Title"_s, u"A"_s);
        document->elements << new QFnElement;
        document->clearContents();
        QCOMPARE(dump(*document), u"@Title|A"_s);
        document->elements << new QFnElement;
        document->clear();
        QCOMPARE(dump(*document), QString());
        // A text that no element shares any more tells that they are gone.
        QFnElement element = elementOf(u"Action||x"_s);
        const QString &text = element.text;
        for (int i = 0; i < 3; ++i) {
            document->elements << nullptr << new QFnElement(element);
            QVERIFY(!text.isDetached());
            i == 0 ? document->clearContents() : i == 1 ? document->clear() : delete document;
            QVERIFY(text.isDetached());
        }
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
