// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/outline.h"

#include "host/lines.h"
#include "host/pages.h"
#include "model/literals_p.h"

#include <QtCore/QHash>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

using Zem::operator""_L1;

constexpr QLatin1String kindNames[] = {
    ""_L1,         "Action"_L1,     "Comment"_L1,       "Character"_L1,     "Note"_L1,
    "Dialogue"_L1, "Page break"_L1, "Parenthetical"_L1, "Scene heading"_L1, "Section"_L1,
    "Synopsis"_L1, "Transition"_L1, "General"_L1,
};
static_assert(std::size(kindNames) == QFnElement::General + 1, "a name for every type");
constexpr QLatin1String titlePage = "Title page"_L1;

int wordsIn(const QString &text)
{
    return int(text.simplified().split(u' ', Qt::SkipEmptyParts).size());
}

/// The keys of \a uses, most used first.
QStringList byUse(const QHash<QString, int> &uses)
{
    QStringList names = uses.keys();
    std::sort(names.begin(), names.end(), [&uses](const QString &a, const QString &b) {
        return std::make_pair(-uses[a], a) < std::make_pair(-uses[b], b);
    });
    return names;
}

void addPages(Host::Outline *outline)
{
    outline->pages.resize(outline->script.size());
    for (const Host::Page &page : Host::layOut(outline->script)) {
        for (const Host::PageLine &line : page.lines) {
            if (line.paragraph >= 0 && outline->pages.at(line.paragraph) == 0)
                outline->pages[line.paragraph] = page.number;
        }
        outline->pageCount = page.number;
    }
    // What is not printed is on the page of what stands above.
    int above = 1;
    for (int i = 0; i < outline->pages.size(); ++i) {
        int &page = outline->pages[i];
        if (!outline->script.at(i).titlePage)
            above = page = std::max(page, above);
    }
}

} // namespace

int Host::Outline::paragraphAt(int position) const
{
    const auto next = std::upper_bound(script.cbegin(), script.cend(), position,
                                       [](int at, const Paragraph &p) { return at < p.start; });
    return int(next - script.cbegin()) - 1;
}

int Host::Outline::sceneOf(int paragraph) const
{
    const auto next = std::upper_bound(headings.cbegin(), headings.cend(), paragraph);
    return int(next - headings.cbegin()) - 1;
}

QString Host::Outline::placeOf(int paragraph) const
{
    if (paragraph < 0)
        return {};
    const Paragraph &one = script.at(paragraph);
    const int page = pages.at(paragraph);
    QStringList parts;
    if (!one.titlePage)
        parts.append(kindNames[one.type]);
    parts.append(page == 0 ? QString(titlePage)
                           : QStringLiteral("Page %1 of %2").arg(page).arg(pageCount));
    parts.append(QStringLiteral("%L1 words").arg(words));
    return parts.join(QStringLiteral("  ·  "));
}

Host::Outline Host::outlineOf(const QString &text)
{
    Outline outline;
    outline.script = read(text);
    outline.words = wordsIn(text);
    addPages(&outline);
    QHash<QString, int> characters, places;
    for (int i = 0; i < outline.script.size(); ++i) {
        const Paragraph &paragraph = outline.script.at(i);
        const bool isCue = paragraph.type == QFnElement::Character;
        if (!isCue && paragraph.type != QFnElement::SceneHeading)
            continue;
        const QString shown = textOf(printedLines(paragraph.stretches).value(0));
        if (isCue) {
            ++characters[shown.section(u'(', 0, 0).trimmed()];
            continue;
        }
        ++places[shown.section(" - "_L1, 0, 0).toUpper()];
        const QString &number = paragraph.sceneNumber;
        outline.headings.append(i);
        outline.scenes.append((number.isEmpty() ? QString() : number + "  "_L1) + shown.toUpper());
    }
    outline.characters = byUse(characters);
    outline.places = byUse(places);
    return outline;
}
