// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/titlepage.h"

#include <algorithm>
#include <iterator>

namespace {

// The first words of the keys. The first four stand in the middle of the page.
constexpr int headCount = 4;
constexpr QLatin1String customaryOrder[] = {
    QLatin1String("TITLE"),     QLatin1String("CREDIT"),  QLatin1String("AUTHOR"),
    QLatin1String("SOURCE"),    QLatin1String("NOTES"),   QLatin1String("DRAFT"),
    QLatin1String("COPYRIGHT"), QLatin1String("CONTACT"),
};

int place(const QString &key)
{
    const QString word = key.section(QLatin1Char(' '), 0, 0).toUpper();
    const auto found = std::find(std::begin(customaryOrder), std::end(customaryOrder), word);
    return int(found - std::begin(customaryOrder));
}

} // namespace

QList<QPair<QString, QString>> Host::titleEntries(const QFnDocument::TitlePage &titlePage)
{
    QList<QPair<QString, QString>> entries;
    for (auto entry = titlePage.cbegin(); entry != titlePage.cend(); ++entry)
        entries.prepend({entry.key(), entry.value()});
    // Two keys may share a place, "Title" and "TITLE": their order must not be the hash's.
    std::stable_sort(entries.begin(), entries.end(), [](const auto &a, const auto &b) {
        const int placeA = place(a.first);
        const int placeB = place(b.first);
        return placeA != placeB ? placeA < placeB : a.first < b.first;
    });
    return entries;
}

bool Host::isHeadOfTitlePage(const QString &key)
{
    return place(key) < headCount;
}
