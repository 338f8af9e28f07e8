// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// What a whole script loses on the road out and back, devices that fail, and an enormous line.

#include "bridge/ZemFountain.h"
#include "dump.h"
#include "host/records.h"
#include "parser/qfnfastparser.h"
#include "writer/qfnwriter.h"

#include <QtCore/QBuffer>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

namespace {

/// Takes half of each piece.
class HalfDevice : public QIODevice
{
public:
    QByteArray taken;

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        taken.append(data, int(size / 2));
        return size / 2;
    }
};

/// The script as rich text, laid out by a writer, and that as the text of a file. An empty
/// paragraph parts what is more than a stretch of action, and a second one goes before what is
/// written into the line above.
QString exported(const QFnDocument &script)
{
    QFnDocument model(nullptr);
    QFnElement::Type above = QFnElement::Undefined;
    for (const QFnElement *element : script.elements) {
        const QFnElement::Type type = element->type;
        const bool twice = type == QFnElement::SectionHeading || type == QFnElement::Synopsis
                           || type == QFnElement::Transition || type == QFnElement::Notes;
        const bool goesOn = type == QFnElement::Action && above == type;
        for (int empty = twice ? 2 : goesOn ? 0 : 1; empty > 0; --empty)
            model.elements.append(new QFnElement);
        if (!element->text.isEmpty())
            model.elements.append(new QFnElement(*element));
        above = type;
    }
    QTextDocument richText;
    ZEMFountainDocumentRenderer renderer;
    renderer.scriptElements = Host::records();
    renderer.render(model, &richText);
    ZemFountain::toFountainDocument(richText, Host::records(), &model, nullptr);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QFnWriter(&file).write(&model);
    return QString::fromUtf8(file.data());
}

/// What such a script comes back as: all that changes, and no more.
void change(QFnDocument *script)
{
    static const QRegularExpression lineFeeds(u"\n(\n*)"_s);
    const QFnElement::Type action = QFnElement::Action;
    QFnElement *above = script->elements.first();
    QString between;
    for (QFnElement *element : qAsConst(script->elements)) {
        const bool isComment = element->type == QFnElement::Boneyard;
        const bool endsInLine = element->text.endsWith(u'\n');
        element->style = QFnStyle();                            // emphasis and centring go,
        element->sceneNumber.clear();                           // scene numbers too,
        element->sectionDepth = qMin(element->sectionDepth, 1); // and the depth of sections;
        if (isComment)
            element->type = action; // what was commented out is action again;
        if (element->type == action)
            element->text.replace(lineFeeds, u"\\1"_s); // paragraphs of action join,
        if (element != above && element->type == action && above->type == action) {
            above->text += between + element->text; // and its stretches do;
            element->clear();
        } else {
            above = element;
        }
        between = isComment ? QString(endsInLine ? 2 : 1, u'\n') : QString();
    }
    if (above->type == action && above->text.toUpper() == above->text)
        above->type = QFnElement::Character; // and capitals at the end of the text are a cue
}

/// The elements that have text.
QString linesOf(const QFnDocument &script)
{
    static const QRegularExpression withText(u"\\|.*\\|."_s);
    return dump(script).split(u'\n').filter(withText).join(u'\n');
}

} // namespace

class HostileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scriptGoesOutAndBack_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("half a page") << u"two-hander"_s;
        QTest::newRow("every element") << u"the-lamp-keeper"_s;
    }
    void scriptGoesOutAndBack()
    {
        QFETCH(QString, name);
        QFile file(QFINDTESTDATA("../examples") + u'/' + name + u".fountain"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        for (int trip = 0; trip < 2; ++trip) {
            QFnFastParser out(nullptr);
            QFnFastParser back(nullptr);
            out.parse(text);
            out.document->titlePage.clear(); // it never leaves
            text = exported(*out.document);
            back.parse(text);
            change(out.document);
            QCOMPARE(linesOf(*back.document), linesOf(*out.document));
        }
    }

    void failingDeviceIsNotNoticed()
    {
        QFnDocument script(nullptr);
        appendElements(u"Action||abcd\nParenthetical||efg\nCharacter||\u00df"_s, &script);
        HalfDevice half;
        half.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        QFnWriter writer(&half);
        QVERIFY(writer.write(&script));
        QCOMPARE(half.taken, QByteArray("abeS"));

        const QString fullDisk = u"/dev/full"_s; // not on every system
        script.elements.last()->text.fill(u'a', 1 << 20);
        QVERIFY(!QFile::exists(fullDisk) || writer.writeFile(fullDisk, &script));
    }

    void manyTitlePageEntriesAreRendered()
    {
        // Qt lays a block out anew at each insertion into it: with one an entry this takes minutes.
        constexpr int count = 100'000;
        QTextDocument richText;
        const QString text = u"Title: a\n"_s.repeated(count) + u'\n';
        ZemFountain::parseText(text, &richText, nullptr, nullptr);
        QCOMPARE(richText.firstBlock().text(), u"Title:a"_s.repeated(count));
    }

    void enormousLineParses()
    {
        const QString number(50'000'000, u'7');
        QFnFastParser parser(nullptr);
        QVERIFY(parser.parse(number));
        QCOMPARE(parser.document->elements.size(), 2);
        QVERIFY(parser.document->elements.first()->text == number);
    }
};

QTEST_MAIN(HostileTest)
#include "tst_hostile.moc"
