// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/lines.h"

#include <QtCore/QStringList>
#include <QtCore/QTextBoundaryFinder>

#include <algorithm>
#include <iterator>

namespace {

struct Range
{
    uint first, last;
};

constexpr Range wideLetters[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

/// For each index of \a text and its end, how many letters have begun before it.
QVector<int> countedLetters(const QString &text)
{
    QVector<int> counts{0};
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text);
    for (int next = int(letters.toNextBoundary()); next > 0; next = int(letters.toNextBoundary())) {
        const int start = int(counts.size()) - 1;
        const uint letter = next - start > 1 && text.at(start).isHighSurrogate()
                                ? QChar::surrogateToUcs4(text.at(start), text.at(start + 1))
                                : text.at(start).unicode();
        const bool wide =
            std::any_of(std::begin(wideLetters), std::end(wideLetters),
                        [letter](const Range &r) { return letter >= r.first && letter <= r.last; });
        counts.insert(start + 1, next - start, counts.last() + (wide ? 2 : 1));
    }
    return counts;
}

void chopBlanks(Host::Line *line)
{
    while (!line->isEmpty() && line->last().text.endsWith(u' ')) {
        line->last().text.chop(1);
        if (line->last().text.isEmpty())
            line->removeLast();
    }
}

/// How many blanks stand in \a text from \a index on.
int blanksAt(const QString &text, int index)
{
    int end = index;
    while (end < text.size() && text.at(end) == u' ')
        ++end;
    return end - index;
}

} // namespace

QString Host::textOf(const Line &line)
{
    QString text;
    for (const Stretch &stretch : line)
        text += stretch.text;
    return text;
}

int Host::lettersOf(const QString &text)
{
    return countedLetters(text).last();
}

Host::Line Host::sliced(const Line &line, int start, int end)
{
    Line slice;
    int index = 0;
    for (Stretch piece : line) {
        const int from = std::max(start - index, 0);
        index += int(piece.text.size());
        const int over = std::max(index - end, 0);
        piece.text = piece.text.mid(from, std::max(int(piece.text.size()) - from - over, 0));
        if (!piece.text.isEmpty())
            slice.append(piece);
    }
    return slice;
}

Host::Line Host::trimmed(const Line &line)
{
    Line ink = sliced(line, blanksAt(textOf(line), 0));
    chopBlanks(&ink);
    return ink;
}

QVector<Host::Line> Host::printedLines(const QVector<Stretch> &stretches)
{
    QVector<Line> lines{Line()};
    bool behindCut = false;
    bool lineIsCut = false;
    bool isCutInFront = false;
    bool hasText = false;
    const auto endLine = [&] {
        chopBlanks(&lines.last());
        if (isCutInFront)
            lines.last() = trimmed(lines.last());
        if (lineIsCut && lines.last().isEmpty())
            lines.removeLast();
        behindCut = lineIsCut = isCutInFront = hasText = false;
    };
    for (Stretch piece : stretches) {
        if (piece.working) {
            behindCut = lineIsCut = true;
            isCutInFront = isCutInFront || !hasText;
            continue;
        }
        const QStringList parts = piece.text.split(QChar::LineSeparator);
        for (int i = 0; i < parts.size(); ++i) {
            if (i > 0) {
                endLine();
                lines.append(Line());
            }
            piece.text = QString(parts.at(i)).replace(u'\t', QLatin1String("    "));
            if (piece.text.isEmpty())
                continue;
            if (behindCut && QStringLiteral(" .,;:!?)\u2026").contains(piece.text.at(0)))
                chopBlanks(&lines.last());
            if (!lines.last().isEmpty() && lines.last().last().emphasis == piece.emphasis)
                lines.last().last().text += piece.text;
            else
                lines.last().append(piece);
            behindCut = false;
            hasText = hasText || piece.text.count(u' ') < piece.text.size();
        }
    }
    endLine();
    return lines;
}

QVector<Host::Line> Host::wrapped(const Line &line, int width)
{
    const QString text = textOf(line);
    const QVector<int> counts = countedLetters(text);
    if (counts.last() <= width)
        return {line};
    QVector<Line> lines;
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, text);
    for (int start = 0; start < text.size();) {
        // The last index with that many letters is the end of one, never inside it.
        const auto past =
            std::upper_bound(counts.cbegin(), counts.cend(), counts.at(start) + width);
        const int full = int(past - counts.cbegin()) - 1;
        // The finder keeps numbers together with the blanks between them.
        const auto mayEndAt = [&](int index) {
            breaks.setPosition(index);
            return breaks.isAtBoundary() || text.at(index - 1) == u' ';
        };
        int end = full + blanksAt(text, full);
        if (end == full && end < text.size()) {
            while (end > start && !mayEndAt(end))
                --end;
            end = end > start ? end : full;
        }
        Line piece = sliced(line, start, end);
        chopBlanks(&piece);
        lines.append(piece);
        start = end;
    }
    return lines;
}
