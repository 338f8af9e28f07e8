// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/titlepage.h"

#include "host/lines.h"

#include <algorithm>
#include <iterator>

namespace {

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

struct Kind
{
    QLatin1String word; ///< How the key begins.
    Part part;
    int above; ///< blank lines
};

// In their customary order. The last stands for every other key.
constexpr Kind kinds[] = {
    {QLatin1String("Title"), Head, 0},   {QLatin1String("Credit"), Head, 3},
    {QLatin1String("Author"), Head, 1},  {QLatin1String("Source"), Head, 3},
    {QLatin1String("Notes"), Left, 1},   {QLatin1String("Draft"), Right, 1},
    {QLatin1String("Date"), Right, 1},   {QLatin1String("Copyright"), Right, 1},
    {QLatin1String("Contact"), Left, 1}, {QLatin1String(""), Left, 1},
};

/// The index in kinds of the entry called \a key.
int placeOf(const QString &key)
{
    const auto kind = std::find_if(std::begin(kinds), std::end(kinds), [&key](const Kind &k) {
        return key.startsWith(k.word, Qt::CaseInsensitive);
    });
    return int(kind - std::begin(kinds));
}

struct Entry
{
    int kind;
    QVector<Line> lines; ///< of the value, none blank
};

/// The entries with a value, in their customary order.
QVector<Entry> entriesOf(const QVector<Host::Paragraph> &script)
{
    QVector<Entry> entries;
    for (const Host::Paragraph &paragraph : script) {
        if (!paragraph.titlePage)
            break;
        Entry entry;
        int start = -1;
        for (const Line &line : Host::printedLines(paragraph.stretches)) {
            const QString text = Host::textOf(line);
            if (start < 0) {
                start = int(text.indexOf(u':')) + 1;
                entry.kind = placeOf(text.left(start));
            }
            const auto ink = std::find_if_not(text.cbegin() + start, text.cend(),
                                              [](QChar c) { return c.isSpace(); });
            start = 0;
            if (ink != text.cend())
                entry.lines.append(Host::sliced(line, int(ink - text.cbegin())));
        }
        if (!entry.lines.isEmpty())
            entries.append(entry);
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &a, const Entry &b) { return a.kind < b.kind; });
    return entries;
}

/// The lines of \a part from the top down, empty ones between two entries.
QVector<Line> linesOf(const QVector<Entry> &entries, Part part)
{
    QVector<Line> lines;
    for (const Entry &entry : entries) {
        const Kind &kind = kinds[entry.kind];
        if (kind.part != part)
            continue;
        if (!lines.isEmpty())
            lines.insert(lines.size(), kind.above, Line());
        for (const Line &line : entry.lines)
            lines += Host::wrapped(line, columns[part].width);
    }
    return lines;
}

/// Puts \a lines below each other from \a row of \a page on, and on to the pages behind it.
void put(const QVector<Line> &lines, Part part, int page, int row, QVector<Host::Page> *pages)
{
    for (const Line &line : lines) {
        if (row == pageRows) {
            row = 0;
            ++page;
        }
        while (pages->size() <= page)
            pages->append(Host::Page());
        const Column &column = columns[part];
        const int free = column.width - Host::lettersOf(Host::textOf(line));
        if (!line.isEmpty())
            (*pages)[page].lines.append({row, column.left + int(free * column.share), line, 0});
        ++row;
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
    const QVector<Entry> entries = entriesOf(script);
    QVector<Page> pages;
    const QVector<Line> head = linesOf(entries, Head);
    const int headLines = int(head.size());
    const int top = std::max(std::min(headRow, pageRows - headLines), 0);
    put(head, Head, 0, top, &pages);
    const int behindHead = int(pages.size());
    for (const Part part : {Left, Right}) {
        const QVector<Line> foot = linesOf(entries, part);
        const int bottom = pageRows - int(foot.size());
        if (bottom >= top + headLines + gap)
            put(foot, part, 0, bottom, &pages);
        else
            put(foot, part, behindHead, 0, &pages);
    }
    for (Page &page : pages)
        std::stable_sort(page.lines.begin(), page.lines.end(),
                         [](const PageLine &a, const PageLine &b) { return a.row < b.row; });
    return pages;
}

QString Host::titleOf(const QVector<Paragraph> &script)
{
    QStringList lines;
    for (const Entry &entry : entriesOf(script)) {
        for (const Line &line : entry.lines) {
            if (entry.kind == 0)
                lines.append(textOf(line));
        }
    }
    return lines.join(u' ');
}
