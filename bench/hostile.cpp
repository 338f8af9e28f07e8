// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// What the shapes of n pieces cost on each road through the library, which grows with n: "growth"
// is the time against half as many pieces, and "memory" is what the result takes, in bytes a
// character.

#include "bench/shapes.h"
#include "bridge/ZemFountain.h"
#include "model/qfndocument.h"
#include "model/qfnelement.h"
#include "parser/qfnfastparser.h"
#include "writer/qfnwriter.h"

#include <QtCore/QBuffer>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <malloc.h>
#include <string>

namespace {

constexpr int smallest = 1 << 14;

/// One way through the library, with what each step leaves for the next.
struct Trip
{
    QString text;
    QFnFastParser parser{nullptr};
    QTextDocument richText;
    QFnDocument exported{nullptr};
    QBuffer file;
};

void parse(Trip &trip)
{
    trip.parser.parse(trip.text);
}

/// What render() cannot do without: the floor that its growth is held against.
void insert(Trip &trip)
{
    QTextCursor cursor(&trip.richText);
    for (const QFnElement *element : trip.parser.document->elements) {
        const QTextCharFormat format = element->style.toTextFormat();
        cursor.insertBlock(element->style.toBlockFormat(), format);
        cursor.insertText(element->text, format);
    }
}

void render(Trip &trip)
{
    ZEMFountainDocumentRenderer().render(*trip.parser.document, &trip.richText);
}

void exportElements(Trip &trip)
{
    ZemFountain::toFountainDocument(trip.richText, {}, &trip.exported, nullptr);
}

void write(Trip &trip)
{
    trip.file.open(QIODevice::WriteOnly);
    QFnWriter(&trip.file).write(trip.parser.document);
}

struct Road
{
    const char *name;
    void (*steps[3])(Trip &); ///< The last one is measured.
    int count;
};

constexpr Road roads[] = {
    {"parse", {parse}, 1},          {"insert", {parse, insert}, 2},
    {"render", {parse, render}, 2}, {"export", {parse, render, exportElements}, 3},
    {"write", {parse, write}, 2},
};

double memoryInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

struct Cost
{
    double seconds, memory;
};

Cost costOf(const Shape &shape, const Road &road, int count)
{
    Trip trip;
    trip.text = shape.text(count);
    for (int i = 0; i < road.count - 1; ++i)
        road.steps[i](trip);
    const double memory = memoryInUse();
    const std::clock_t start = std::clock();
    road.steps[road.count - 1](trip);
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    return {seconds, (memoryInUse() - memory) / trip.text.size()};
}

void measure(benchmark::State &state, const Shape &shape, const Road &road)
{
    const int count = int(state.range(0));
    double best = std::numeric_limits<double>::max();
    double bestOfHalf = best;
    while (state.KeepRunning()) {
        // In turns, so that what else the machine does falls on both.
        bestOfHalf = std::min(bestOfHalf, costOf(shape, road, count / 2).seconds);
        const Cost cost = costOf(shape, road, count);
        best = std::min(best, cost.seconds);
        state.SetIterationTime(cost.seconds);
        state.counters["memory"] = cost.memory;
    }
    state.SetComplexityN(count);
    state.counters["growth"] = best / bestOfHalf;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (const Road &road : roads) {
        for (const Shape &shape : shapes) {
            const std::string name = std::string(road.name) + '/' + shape.name;
            benchmark::RegisterBenchmark(name.c_str(), measure, shape, road)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond)
                ->RangeMultiplier(2)
                ->Range(smallest, 4 * smallest)
                ->Iterations(9)
                ->Complexity(benchmark::oN);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
