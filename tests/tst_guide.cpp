// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// The pieces of code that docs/developers.md shows, at work.

#include "bridge/ZemFountain.h"
#include "parser/qfnfastparser.h"
#include "writer/qfnwriter.h"

#include "dump.h"
#include "examples/guide.h"
#include "files.h"
#include "formats.h"

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <memory>
#include <vector>

namespace {

const QString sample =
    u"INT. SEA\n\nx y\n\nMARA\n(softly)\nIt burns.\nIt does.\n\n# One\n\n= She leaves.\n\n"
    "z w [[why?]]\n\nCUT TO:\n\n===\nThe end.\n"_s;

QList<ZEMScriptElement> paragraphKinds()
{
    return recordsOf(u"Action=m1|SceneHeading=m2|Scene Heading=m2|Character=m3|Dialogue=m4|"
                     "Parenthetical=m5"_s);
}

/// The elements that have text.
QString textsOf(const QFnDocument &document)
{
    const QRegularExpression withText(u"[^|]$"_s);
    return dump(document).split(u'\n').filter(withText).join(u'\n');
}

} // namespace

class GuideTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void weightsAreMended()
    {
        QTextDocument document;
        ZemFountain::parseText(u"a **b** c\n\n.d\n\n"_s, &document, nullptr, nullptr);
        QCOMPARE(document.firstBlock().charFormat().fontWeight(), 0);
        mendWeights(&document);
        QList<int> weights;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            weights += block.charFormat().fontWeight();
            QTextCursor inText(block);
            inText.movePosition(QTextCursor::EndOfBlock);
            QCOMPARE(inText.charFormat().fontWeight(), weights.last());
        }
        constexpr int normal = QFont::Normal;
        QCOMPARE(weights, (QList<int>{normal, QFont::Bold, normal, normal, normal}));
    }

    void recordsForBothRoads()
    {
        QList<ZEMScriptElement> kinds = paragraphKinds();
        QTextDocument document;
        ZemFountain::parseText(u"INT. SEA\n\nx y\n"_s, &document, &kinds, nullptr);
        const auto typesFound = [&document](const QList<ZEMScriptElement> &list) {
            QFnDocument model(nullptr);
            ZemFountain::toFountainDocument(document, list, &model, nullptr);
            return QList<int>{model.elements.first()->type, model.elements.last()->type};
        };
        QCOMPARE(typesFound(kinds), (QList<int>{QFnElement::SceneHeading, QFnElement::Action}));
        kinds.swapItemsAt(1, 2);            // The name with a blank is found first,
        kinds.first() = ZEMScriptElement(); // and a record without a property never is.
        kinds.first().name = u"Action"_s;
        QCOMPARE(typesFound(kinds), (QList<int>{QFnElement::Undefined, QFnElement::Undefined}));
    }

    void laidOutScriptComesBack()
    {
        QFnFastParser out(nullptr);
        out.parse(sample);
        const QString before = textsOf(*out.document);
        layOut(out.document);
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        QFnWriter(&file).write(out.document);
        QFnFastParser back(nullptr);
        back.parse(QString::fromUtf8(file.data()));
        QCOMPARE(textsOf(*back.document).replace(u"||.SEA"_s, u"||SEA"_s), before);
    }

    void failedSaveLeavesTheFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"script.fountain"_s);
        QList<ZEMScriptElement> kinds = paragraphKinds();
        QTextDocument document;
        ZemFountain::parseText(sample, &document, &kinds, nullptr);
        QVERIFY(save(path, document, kinds));
        const QByteArray saved = contents(path);
        QVERIFY(saved.contains("\n\nMARA\n(softly)\nIt burns."));

        ZemFountain::parseText(u"x y "_s.repeated(5000), &document, &kinds, nullptr);
        const SizeLimit limit(10000);
        QVERIFY(!save(path, document, kinds));
        QCOMPARE(contents(path), saved);
    }

    void parseInAThreadOfItsOwn()
    {
        // Several at once, so that a checker of races has something to look at.
        std::vector<std::unique_ptr<QFnFastParser>> parsers;
        std::vector<std::unique_ptr<QThread>> threads;
        for (int i = 0; i < 4; ++i) {
            parsers.push_back(std::make_unique<QFnFastParser>(nullptr));
            QFnFastParser *parser = parsers.back().get();
            threads.emplace_back(QThread::create([parser] { parser->parse(sample.repeated(50)); }));
            threads.back()->start();
        }
        for (const auto &thread : threads)
            thread->wait();
        ZEMFountainDocumentRenderer renderer;
        renderer.scriptElements = paragraphKinds();
        QTextDocument first;
        QVERIFY(renderer.render(*parsers.front()->document, &first));
        for (const auto &parser : parsers) {
            QTextDocument document;
            renderer.render(*parser->document, &document);
            QCOMPARE(document.toPlainText(), first.toPlainText());
        }
    }
};

QTEST_MAIN(GuideTest)
#include "tst_guide.moc"
