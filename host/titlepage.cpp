// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/titlepage.h"

#include "host/lines.h"
#include "model/literals_p.h"

#include <algorithm>
#include <iterator>

namespace {

using Zem::operator""_L1;

using Host::Line;
using Host::pageRows;

enum Part { Head, Left, Right };

/// Where the lines of a part stand, in letters.
struct Column
{
    int left, width;
    qreal share; ///< of the free letters of a line, how many stand on its left
};

constexpr Column columns[] = {{15, 60, 0.5}, {15, 36, 0}, {53, 22, 1}};
constexpr int headRow = 16; // a third of the way down the paper
constexpr int gap = 2;      // lines between the head and the foot at least

struct Key
{
    QLatin1String word; ///< How the key begins.
    Part part;
    int above = 1; ///< blank lines
};

// In their customary order. The last stands for every other key.
constexpr Key keys[] = {
    {"Title"_L1, Head, 0}, {"Credit"_L1, Head, 3}, {"Author"_L1, Head}, {"Source"_L1, Head, 3},
    {"Notes"_L1, Left},    {"Draft"_L1, Right},    {"Date"_L1, Right},  {"Copyright"_L1, Right},
    {"Contact"_L1, Left},  {""_L1, Left},
};

/// The index in keys of the entry called \a key.
int placeOf(const QString &key)
{
    const auto found = std::find_if(std::begin(keys), std::end(keys), [&key](const Key &k) {
        return key.startsWith(k.word, Qt::CaseInsensitive);
    });
    return int(found - std::begin(keys));
}

/// A line of a value, or an empty one between two entries.
struct TitleLine
{
    int key;       ///< index in keys
    int paragraph; ///< index in the script
    Line line;
};

/// The lines of the values, none blank, in the customary order of their entries.
QVector<TitleLine> titleLines(const QVector<Host::Paragraph> &script)
{
    QVector<TitleLine> lines;
    for (int i = 0; i < script.size(); ++i) {
        if (!script.at(i).titlePage)
            continue;
        const QString text = script.at(i).text();
        int start = int(text.indexOf(u':')) + 1;
        const int key = placeOf(text.left(start));
        for (const Line &line : Host::printedLines(script.at(i).stretches)) {
            const Line value = Host::trimmed(Host::sliced(line, start));
            if (!value.isEmpty())
                lines.append({key, i, value});
            start = 0;
        }
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const TitleLine &a, const TitleLine &b) { return a.key < b.key; });
    return lines;
}

/// Those of \a lines that stand in \a part, broken to its width, with empty ones between entries.
QVector<TitleLine> linesOf(const QVector<TitleLine> &lines, Part part)
{
    QVector<TitleLine> own;
    for (const TitleLine &line : lines) {
        const Key &key = keys[line.key];
        if (key.part != part)
            continue;
        if (!own.isEmpty() && own.last().paragraph != line.paragraph)
            own.insert(own.size(), key.above, {line.key, line.paragraph, Line()});
        for (const Line &piece : Host::wrapped(line.line, columns[part].width))
            own.append({line.key, line.paragraph, piece});
    }
    return own;
}

/// Puts \a lines below each other from \a row of \a page on, and on to the pages behind it.
void put(const QVector<TitleLine> &lines, int page, int row, QVector<Host::Page> *pages)
{
    for (const TitleLine &line : lines) {
        page += row / pageRows;
        row %= pageRows;
        if (pages->size() <= page)
            pages->append(Host::Page());
        const Column &column = columns[keys[line.key].part];
        const int free = column.width - Host::lettersOf(Host::textOf(line.line));
        (*pages)[page].lines.append(
            {row++, column.left + int(free * column.share), line.line, line.paragraph});
    }
}

} // namespace

QList<QPair<QString, QString>> Host::titleEntries(const QFnDocument::TitlePage &titlePage)
{
    QList<QPair<QString, QString>> entries;
    for (auto entry = titlePage.cbegin(); entry != titlePage.cend(); ++entry)
        entries.prepend({entry.key(), entry.value()});
    // Two keys may share a place, "Title" and "TITLE": their order must not be the hash's.
    std::stable_sort(entries.begin(), entries.end(), [](const auto &a, const auto &b) {
        const auto rank = [](const QString &key) { return std::make_pair(placeOf(key), key); };
        return rank(a.first) < rank(b.first);
    });
    return entries;
}

QVector<Host::Page> Host::titlePages(const QVector<Paragraph> &script)
{
    const QVector<TitleLine> lines = titleLines(script);
    QVector<Page> pages;
    const QVector<TitleLine> head = linesOf(lines, Head);
    const int top = std::max(std::min(headRow, pageRows - int(head.size())), 0);
    put(head, 0, top, &pages);
    const int behindHead = int(pages.size());
    for (const Part part : {Left, Right}) {
        const QVector<TitleLine> foot = linesOf(lines, part);
        const int bottom = pageRows - int(foot.size());
        const bool fits = bottom >= top + head.size() + gap;
        put(foot, fits ? 0 : behindHead, fits ? bottom : 0, &pages);
    }
    for (Page &page : pages)
        std::stable_sort(page.lines.begin(), page.lines.end(),
                         [](const PageLine &a, const PageLine &b) { return a.row < b.row; });
    return pages;
}

QString Host::titleOf(const QVector<Paragraph> &script)
{
    QStringList title;
    for (const TitleLine &line : titleLines(script)) {
        if (line.key == 0)
            title.append(textOf(line.line));
    }
    return title.join(u' ');
}
