// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"
#include "elements.h"
#include "formats.h"

namespace {

// The names by type. The two headings give one with a blank and are known by one without.
// clang-format off
constexpr std::u16string_view given[] = {
    u"Undefined", u"Action", u"Boneyard", u"Character", u"Notes", u"Dialogue", u"PageBreak",
    u"Parenthetical", u"Scene Heading", u"Section Heading", u"Synopsis", u"Transition", u"General",
};
constexpr std::u16string_view accepted[] = {
    u"Undefined", u"Action", u"Boneyard", u"Character", u"Notes", u"Dialogue", u"PageBreak",
    u"Parenthetical", u"SceneHeading", u"SectionHeading", u"Synopsis", u"Transition", u"General",
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
        for (int type = 0; type <= 12; ++type) {
            QCOMPARE(QFnElement::toString(QFnElement::Type(type)), textOf(given[type]));
            QCOMPARE(int(QFnElement::toElementType(textOf(accepted[type]))), type);
        }
        QCOMPARE(QFnElement::toString(QFnElement::Type(-1)), QString());
        QCOMPARE(QFnElement::toString(QFnElement::Type(13)), QString());
        for (const QString &name :
             {u""_s, u"Scene Heading"_s, u"Section Heading"_s, u"action"_s, u" Action"_s})
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
        QString text = u"x"_s; // as long as it is shared, there are elements
        const auto fill = [&] {
            document->titlePage.insert(u"Title"_s, u"A"_s);
            document->elements << nullptr << new QFnElement;
            document->elements.last()->text = text;
        };
        fill();
        QVERIFY(!text.isDetached());
        document->clearContents();
        QCOMPARE(dump(*document), u"@Title|A"_s);
        QVERIFY(text.isDetached());
        fill();
        document->clear();
        QCOMPARE(dump(*document), QString());
        QVERIFY(text.isDetached());
        fill();
        delete document;
        QVERIFY(text.isDetached());
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
