// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// Times each road through the library beside its floor: the least that the same result costs with
// the same data types. Objects are made and deleted outside the time that is measured.
//
// zembench EXAMPLE [Google Benchmark's options]   measures times
// zembench --peak ROAD                            prints the bytes a character that it takes

#include "bench/script.h"
#include "bridge/ZemFountain.h"
#include "model/qfndocument.h"
#include "model/qfnelement.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QTemporaryFile>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <map>
#include <memory>

#include <sys/resource.h>

namespace {

/// Twelve kinds of paragraph, as an application has them.
QList<ZEMScriptElement> records()
{
    QList<ZEMScriptElement> list;
    for (int type = QFnElement::Action; type <= QFnElement::General; ++type) {
        ZEMScriptElement record;
        record.name = QFnElement::toString(QFnElement::Type(type));
        record.blockFormat.setLeftMargin(10.0 * type);
        record.blockFormat.setTopMargin(type % 3 * 12.0);
        record.charFormat.setFontFamilies({QStringLiteral("Courier")});
        list.append(record);
    }
    return list;
}

/// A script and what the cases start from. Made once for each size.
struct Script
{
    explicit Script(const QString &source)
        : text(source)
        , kinds(records())
        , parser(nullptr)
    {
        parser.parse(text);
        for (const QFnElement *element : parser.document->elements) {
            QTextCharFormat charFormat = element->style.toTextFormat();
            QTextBlockFormat blockFormat = element->style.toBlockFormat();
            const auto record = ZEMScriptElement::find(kinds, QFnElement::toString(element->type));
            charFormat.merge(record.charFormat);
            blockFormat.merge(record.blockFormat);
            formats.append({blockFormat, charFormat});
        }
        rendered = std::make_unique<QTextDocument>();
        ZemFountain::parseText(text, rendered.get(), &kinds, nullptr);
    }

    QString text;
    QList<ZEMScriptElement> kinds;
    QFnFastParser parser;
    QVector<QPair<QTextBlockFormat, QTextCharFormat>> formats; ///< of each element, merged
    std::unique_ptr<QTextDocument> rendered;
};

// Each case takes the script and gives the seconds that its work took.

/// Of the processor: what else the machine does would drown the ratios of the clock.
template<typename Work>
double seconds(Work work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

double tokenLists(const Script &script)
{
    QFnFastParser parser(nullptr);
    parser.buffer = script.text;
    return seconds([&parser] {
        QList<QFnToken> line;
        while (parser.nextToken().kind != QFnToken::EndOfInput) {
            if (parser.currentToken.kind == QFnToken::NewLine)
                line.erase(line.begin(), line.end());
            else
                line.append(parser.currentToken);
        }
    });
}

double parse(const Script &script)
{
    QFnFastParser parser(nullptr);
    return seconds([&] { parser.parse(script.text); });
}

double bareInsertion(const Script &script)
{
    QTextDocument document;
    return seconds([&] {
        QTextCursor cursor(&document);
        auto format = script.formats.cbegin();
        for (const QFnElement *element : script.parser.document->elements) {
            cursor.insertBlock(format->first, format->second);
            cursor.insertText(element->text, format->second);
            ++format;
        }
    });
}

double render(const Script &script)
{
    QTextDocument document;
    ZEMFountainDocumentRenderer renderer;
    renderer.scriptElements = script.kinds;
    return seconds([&] { renderer.render(*script.parser.document, &document); });
}

double import(const Script &script)
{
    QTextDocument document;
    QList<ZEMScriptElement> kinds = script.kinds;
    return seconds([&] { ZemFountain::parseText(script.text, &document, &kinds, nullptr); });
}

double importAsOneEdit(const Script &script)
{
    QTextDocument document;
    QList<ZEMScriptElement> kinds = script.kinds;
    return seconds([&] {
        QTextCursor cursor(&document);
        cursor.beginEditBlock();
        ZemFountain::parseText(script.text, &document, &kinds, nullptr);
        cursor.endEditBlock();
    });
}

double exportWalk(const Script &script)
{
    return seconds([&script] {
        for (auto block = script.rendered->begin(); block.isValid(); block = block.next()) {
            for (auto it = block.begin(); !it.atEnd(); ++it)
                benchmark::DoNotOptimize(it.fragment().text().toUtf8());
        }
    });
}

double exportFile(const Script &script)
{
    QTemporaryFile file;
    file.open();
    return seconds(
        [&] { ZemFountain::writeFile(file.fileName(), *script.rendered, script.kinds, nullptr); });
}

double exportLookUp(const Script &script)
{
    return seconds([&script] {
        for (auto block = script.rendered->begin(); block.isValid(); block = block.next())
            benchmark::DoNotOptimize(ZEMScriptElement::find(script.kinds, block));
    });
}

struct Case
{
    const char *name;
    double (*run)(const Script &);
};

constexpr Case cases[] = {
    {"token lists", tokenLists}, {"parse", parse},       {"bare insertion", bareInsertion},
    {"render", render},          {"import", import},     {"import as one edit", importAsOneEdit},
    {"export walk", exportWalk}, {"export", exportFile}, {"export look-up", exportLookUp},
};

/// The script of this size; 0 stands for the example.
const Script &scriptOf(const QString &example, int size)
{
    static std::map<int, Script> scripts;
    if (scripts.count(size) == 0)
        scripts.try_emplace(size, size ? generatedScript(size) : example);
    return scripts.at(size);
}

void registerCase(const Case &which, const QString &example)
{
    const auto measure = [which, example](benchmark::State &state) {
        const Script &script = scriptOf(example, int(state.range(0)));
        while (state.KeepRunning())
            state.SetIterationTime(which.run(script));
        state.SetComplexityN(script.text.size());
        state.counters["characters"] = script.text.size();
    };
    benchmark::RegisterBenchmark(which.name, measure)
        ->UseManualTime()
        ->ArgsProduct({{0, 64 << 10, 512 << 10, 4 << 20, 32 << 20}})
        ->Complexity(benchmark::oN);
}

/// The most memory that this process had, in bytes.
qint64 peakMemory()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024LL;
}

/// Prints how much memory a road takes beside the text, for each of its characters.
int printPeak(const QString &road)
{
    const QString text = generatedScript(32 << 20);
    QList<ZEMScriptElement> kinds = records();
    QFnFastParser parser(nullptr);
    QTextDocument document;
    QTextCursor cursor(&document);
    const qint64 before = peakMemory();
    if (road == QLatin1String("import as one edit"))
        cursor.beginEditBlock();
    if (road == QLatin1String("parse"))
        parser.parse(text);
    else
        ZemFountain::parseText(text, &document, &kinds, nullptr);
    std::printf("%.1f\n", double(peakMemory() - before) / text.size());
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == QLatin1String("--peak"))
        return printPeak(arguments.value(2));
    const QString example = readFile(arguments.value(1));
    for (const Case &which : cases)
        registerCase(which, example);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
