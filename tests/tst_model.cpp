// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"
#include "elements.h"
#include "formats.h"

namespace {

// A type as its number and the name that it gives.
const Row typeRows[] = {
    {"below", u"-1", u""},
    {"undefined", u"0", u"Undefined"},
    {"action", u"1", u"Action"},
    {"boneyard", u"2", u"Boneyard"},
    {"cue", u"3", u"Character"},
    {"note", u"4", u"Notes"},
    {"speech", u"5", u"Dialogue"},
    {"page break", u"6", u"PageBreak"},
    {"aside", u"7", u"Parenthetical"},
    {"heading", u"8", u"Scene Heading"},
    {"section", u"9", u"Section Heading"},
    {"synopsis", u"10", u"Synopsis"},
    {"transition", u"11", u"Transition"},
    {"general", u"12", u"General"},
    {"above", u"13", u""},
};

// A name and the number of the type that it is taken for.
const Row nameRows[] = {
    {"nothing", u"", u"0"},
    {"undefined", u"Undefined", u"0"},
    {"action", u"Action", u"1"},
    {"boneyard", u"Boneyard", u"2"},
    {"cue", u"Character", u"3"},
    {"note", u"Notes", u"4"},
    {"speech", u"Dialogue", u"5"},
    {"page break", u"PageBreak", u"6"},
    {"aside", u"Parenthetical", u"7"},
    {"heading", u"SceneHeading", u"8"},
    {"section", u"SectionHeading", u"9"},
    {"synopsis", u"Synopsis", u"10"},
    {"transition", u"Transition", u"11"},
    {"general", u"General", u"12"},
    {"heading with a blank", u"Scene Heading", u"0"},
    {"section with a blank", u"Section Heading", u"0"},
    {"other case", u"action", u"0"},
    {"blank in front", u" Action", u"0"},
};

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
    void typesHaveNames_data() { addRows(typeRows); }
    void typesHaveNames()
    {
        check([](const QString &n) { return QFnElement::toString(QFnElement::Type(n.toInt())); });
    }

    void namesHaveTypes_data() { addRows(nameRows); }
    void namesHaveTypes()
    {
        check([](const QString &name) { return QString::number(QFnElement::toElementType(name)); });
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
        auto *document = new QFnDocument(&parent); // what is not deleted shows as a leak
        QCOMPARE(qobject_cast<QFnDocument *>(parent.children().value(0)), document);
        QCOMPARE(document->metaObject()->className(), "QFnDocument");
        document->titlePage.insert(u"Title"_s, u"A"_s);
        document->elements << new QFnElement << nullptr << new QFnElement;
        document->clearContents();
        QCOMPARE(dump(*document), u"@Title|A"_s);
        document->elements << new QFnElement;
        document->clear();
        QCOMPARE(dump(*document), QString());
        document->elements << nullptr << new QFnElement;
    }
};

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
