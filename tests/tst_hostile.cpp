// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// A step whose cost grows with the square of the text shows in what it makes and copies, not by the
// clock.

#include "bench/heap.h"
#include "bench/shapes.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <QtTest/QtTest>

namespace {

struct Cost
{
    qint64 parts, bytes; ///< elements and entries, and what they and the way to them took
};

Cost costOf(const Shape &shape, int count)
{
    const QString text = shape.text(count);
    QFnFastParser parser(nullptr);
    const qint64 before = heapUse().bytes;
    parser.parse(text);
    const qint64 parts = parser.document->elements.size() + parser.document->titlePage.size();
    return {parts, heapUse().bytes - before};
}

} // namespace

class HostileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void costGrowsWithTheText()
    {
        QStringList dear;
        for (const Shape &shape : shapes) {
            const Cost once = costOf(shape, 4096), twice = costOf(shape, 2 * 4096);
            if (twice.parts > 2 * once.parts || twice.bytes > 3 * once.bytes)
                dear += QString::fromLatin1(shape.name);
        }
        QCOMPARE(dear, QStringList());
    }
};

QTEST_GUILESS_MAIN(HostileTest)
#include "tst_hostile.moc"
