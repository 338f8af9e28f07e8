// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"
#include "elements.h"
#include "formats.h"

namespace {

// The names by type. Those with a blank are known without it.
// clang-format off
constexpr const char *names[] = {
    "Undefined", "Action", "Boneyard", "Character", "Notes", "Dialogue", "PageBreak",
    "Parenthetical", "Scene Heading", "Section Heading", "Synopsis", "Transition", "General",
};
// clang-format on

} // namespace

class ModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typesHaveNames()
    {
        for (int type = 0; type <= 12; ++type) {
            QString name = QLatin1String(names[type]);
            QCOMPARE(QFnElement::toString(QFnElement::Type(type)), name);
            QCOMPARE(int(QFnElement::toElementType(name.remove(u' '))), type);
        }
        QCOMPARE(QFnElement::toString(QFnElement::Type(-1)), QString());
        QCOMPARE(QFnElement::toString(QFnElement::Type(13)), QString());
        for (const QString &name :
             {u""_s, u"Scene Heading"_s, u"Section Heading"_s, u"action"_s, u" Action"_s})
            QCOMPARE(QFnElement::toElementType(name), QFnElement::Undefined);
    }

    void styleGivesFormats_data() { addCases({u"model-styles"_s}); }
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
