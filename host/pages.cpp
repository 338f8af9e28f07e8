// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/pages.h"

#include "host/lines.h"
#include "host/titlepage.h"

#include <algorithm>
#include <iterator>

namespace {

using Host::Line;

constexpr int leftNumber = 13;      // where a scene number left of its heading ends
constexpr int rightNumber = 80;     // where the one right of it ends
constexpr int longestNumber = 12;   // a longer one is cut
constexpr int longestCue = 4;       // lines of a cue that are said again on the next page
constexpr int leastLines = 2;       // of a paragraph or speech on each side of the end of a page
constexpr int reachForSentence = 2; // lines that a page may stay short to end with a sentence

/// Where a kind of paragraph stands, in letters and lines.
struct Place
{
    QFnElement::Type type;
    int column, width, hanging; ///< the lines below the first start \c hanging letters further in
    int above;
    bool capitals;
};

constexpr Place places[] = {
    {QFnElement::Action, 15, 60, 0, 1, false},   {QFnElement::SceneHeading, 15, 60, 0, 1, true},
    {QFnElement::Character, 37, 38, 0, 1, true}, {QFnElement::Parenthetical, 31, 25, 1, 0, false},
    {QFnElement::Dialogue, 25, 35, 0, 0, false}, {QFnElement::Transition, 15, 60, 0, 1, true},
};

/// A line before it has its row on a page.
struct Row
{
    Host::PageLine line;
    QFnElement::Type type;
    QString number;  ///< of the scene, beside the first line of its heading
    int above;       ///< blank lines, left out at the top of a page
    bool startsPage; ///< because a page break stands above it
    bool mayStartPage = false;
    int cue = -1; ///< Of dialogue: the row of the cue of the speech, or -1.
};

bool isPrinted(QFnElement::Type type)
{
    return type != QFnElement::Notes && type != QFnElement::Boneyard && type != QFnElement::Synopsis
           && type != QFnElement::SectionHeading && type != QFnElement::PageBreak;
}

bool isSpoken(QFnElement::Type type)
{
    return type == QFnElement::Dialogue || type == QFnElement::Parenthetical;
}

const Place &placeOf(QFnElement::Type type)
{
    const auto place = std::find_if(std::begin(places), std::end(places),
                                    [type](const Place &p) { return p.type == type; });
    return place == std::end(places) ? places[0] : *place;
}

/// The lines of a paragraph at their columns, beside a scene number of \a letters.
QVector<Host::PageLine> placedLines(const Host::Paragraph &paragraph, const Place &place,
                                    int letters)
{
    QVector<Host::PageLine> placed;
    const int width =
        std::min(place.width - place.hanging, rightNumber - letters - place.column - 1);
    for (Line line : Host::printedLines(paragraph.stretches)) {
        for (Host::Stretch &stretch : line)
            stretch.text = place.capitals ? stretch.text.toUpper() : stretch.text;
        for (const Line &part : Host::wrapped(line, width)) {
            int column = place.column + (placed.isEmpty() ? 0 : place.hanging);
            if (paragraph.centred)
                column += (place.width - Host::lettersOf(Host::textOf(part))) / 2;
            if (place.type == QFnElement::Transition)
                column += place.width - Host::lettersOf(Host::textOf(part));
            placed.append({0, column, part, -1});
        }
    }
    return placed;
}

/// Tells which of the rows from \a begin to \a end, of one paragraph or speech, may start a page.
void allowPageStarts(QVector<Row> *rows, int begin, int end)
{
    const bool belowHeading = begin > 0 && rows->at(begin - 1).type == QFnElement::SceneHeading;
    (*rows)[begin].mayStartPage = !belowHeading && rows->at(begin).type != QFnElement::Transition;
    int body = begin;
    while (body < end && rows->at(body).type == QFnElement::Character)
        ++body;
    for (int i = body; i < end; ++i) {
        Row &row = (*rows)[i];
        row.cue = body > begin ? begin : -1;
        if (i - body >= leastLines && end - i >= leastLines
            && (row.type == QFnElement::Action || isSpoken(row.type)))
            row.mayStartPage = rows->at(i - 1).type != QFnElement::Parenthetical;
    }
}

/// The printed lines of \a script from the top down, before they have their places on pages.
QVector<Row> rowsOf(const QVector<Host::Paragraph> &script)
{
    QVector<Row> rows;
    int blankLines = 0;      // in the script, beyond the customary one
    bool behindCut = false;  // what stands above is not printed
    bool startsPage = false; // stands below the last row
    bool joined = false;     // no blank line has come since the last row
    int end = -1;            // of the last paragraph in the source
    for (int i = 0; i < script.size(); ++i) {
        const Host::Paragraph &paragraph = script.at(i);
        joined = joined && paragraph.start == end;
        end = paragraph.end;
        startsPage = startsPage || paragraph.type == QFnElement::PageBreak;
        const bool blank = paragraph.type == QFnElement::Action && paragraph.text().isEmpty();
        // Blank lines on both sides of what is not printed would add up.
        blankLines += blank && !behindCut ? 1 : 0;
        const bool printed = !blank && !paragraph.titlePage && isPrinted(paragraph.type);
        const Place &place = placeOf(paragraph.type);
        const QString number = paragraph.sceneNumber.left(longestNumber);
        const auto lines = printed ? placedLines(paragraph, place, Host::lettersOf(number))
                                   : QVector<Host::PageLine>();
        behindCut = blank ? behindCut : lines.isEmpty();
        if (lines.isEmpty())
            continue;

        const bool goesOn = joined && place.type == rows.last().type;
        Row row{{}, place.type, number, goesOn ? 0 : place.above + blankLines, startsPage};
        for (const Host::PageLine &line : lines) {
            row.line = line;
            row.line.paragraph = i;
            rows.append(row);
            row.startsPage = false;
            row.above = 0;
            row.number.clear();
        }
        blankLines = 0;
        startsPage = false;
        joined = row.type == QFnElement::Action;
    }
    for (int begin = 0, next = 0; begin < rows.size(); begin = next) {
        const bool speaks = rows.at(begin).type == QFnElement::Character;
        for (next = begin + 1; next < rows.size(); ++next) {
            if (rows.at(next).line.paragraph != rows.at(next - 1).line.paragraph
                && !(speaks && isSpoken(rows.at(next).type)))
                break;
        }
        allowPageStarts(&rows, begin, next);
    }
    return rows;
}

/// The lines of the cue at \a cue for a speech that goes on.
QVector<Line> continuedCue(const QVector<Row> &rows, int cue)
{
    Line line;
    for (int i = cue; rows.at(i).type == QFnElement::Character; ++i) {
        if (i > cue)
            line.last().text += u' ';
        line += rows.at(i).line.stretches;
    }
    if (!Host::textOf(line).contains(QLatin1String("(CONT")))
        line.append({QStringLiteral(" (CONT'D)")});
    return Host::wrapped(line, placeOf(QFnElement::Character).width).mid(0, longestCue);
}

bool endsSentence(const Row &row)
{
    const QString text = Host::textOf(row.line.stretches);
    const auto last = std::find_if_not(text.crbegin(), text.crend(), [](QChar c) {
        return QStringLiteral("\"')]\u201D\u2019\u00BB").contains(c);
    });
    return last != text.crend() && QStringLiteral(".?!\u2026").contains(*last);
}

/// The row behind the last of a page that starts with row \a start, its first \a used lines taken.
int endOfPage(const QVector<Row> &rows, int start, int used)
{
    int best = -1;
    int forced = start + 1;
    for (int i = start; i < rows.size(); ++i) {
        const Row &row = rows.at(i);
        if (i > start) {
            if (row.startsPage)
                return i;
            const int more = row.cue < 0 ? 0 : 1;
            forced = used + more <= Host::pageRows ? i : forced;
            best = forced == i && row.mayStartPage ? i : best;
            used += row.above;
        }
        if (++used > Host::pageRows)
            break;
    }
    if (used <= Host::pageRows)
        return int(rows.size());
    if (best < 0)
        return forced;
    for (int i = best; i >= best - reachForSentence && i > start && rows.at(best).cue >= 0; --i) {
        if (rows.at(i).cue == rows.at(best).cue && rows.at(i).mayStartPage
            && endsSentence(rows.at(i - 1)))
            return i;
    }
    return best;
}

Host::PageLine addedLine(int row, int column, const QString &text)
{
    return {row, column, {Host::Stretch{text}}, -1};
}

/// Adds the line of \a row to \a page, with the number of the scene on both sides.
void addRow(const Row &row, int line, Host::Page *page)
{
    const int letters = Host::lettersOf(row.number);
    if (letters > 0)
        page->lines.append(addedLine(line, leftNumber - letters, row.number));
    page->lines.append(row.line);
    page->lines.last().row = line;
    if (letters > 0)
        page->lines.append(addedLine(line, rightNumber - letters, row.number));
}

} // namespace

QVector<Host::Page> Host::layOut(const QVector<Paragraph> &script)
{
    const int cueColumn = placeOf(QFnElement::Character).column;
    QVector<Page> pages = titlePages(script);
    const QVector<Row> rows = rowsOf(script);
    int begin = 0;
    for (int number = 1; number == 1 || begin < rows.size(); ++number) {
        pages.append(Page());
        Page &page = pages.last();
        page.number = number;
        int line = 0;
        if (begin < rows.size() && rows.at(begin).cue >= 0) {
            for (const Line &part : continuedCue(rows, rows.at(begin).cue))
                page.lines.append({line++, cueColumn, part, -1});
        }
        const int end = endOfPage(rows, begin, line);
        for (int i = begin; i < end; ++i) {
            line += i > begin ? rows.at(i).above : 0;
            addRow(rows.at(i), line++, &page);
        }
        if (end < rows.size() && rows.at(end).cue >= 0)
            page.lines.append(addedLine(line, cueColumn, QStringLiteral("(MORE)")));
        begin = end;
    }
    return pages;
}

QByteArray Host::toPlainPages(const QVector<Page> &pages)
{
    QString text;
    for (int i = 0; i < pages.size(); ++i) {
        if (i > 0)
            text += u'\f';
        int row = 0;
        int column = 0;
        for (const PageLine &line : pages.at(i).lines) {
            const QString letters = textOf(line.stretches);
            if (letters.isEmpty())
                continue; // and no blanks at the end of a line
            if (line.row > row)
                column = 0;
            text += QString(line.row - row, u'\n')
                    + QString(std::max(line.column - column, 0), u' ') + letters;
            row = line.row;
            column = line.column + lettersOf(letters);
        }
        text += pages.at(i).lines.isEmpty() ? QString() : QStringLiteral("\n");
    }
    return text.toUtf8();
}
