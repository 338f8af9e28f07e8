// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_OUTLINE_H
#define HOST_OUTLINE_H

#include "host/reading.h"

#include <QtCore/QStringList>

namespace Host {

/// What there is to tell about a script beside its text. A long script takes a while: make it in a
/// thread of its own.
struct Outline
{
    QVector<Paragraph> script;
    QVector<int> pages; ///< For each paragraph the number of its page, 0 for a title page.
    int pageCount = 0;
    int words = 0;
    QVector<int> headings;          ///< The index in the script of each scene heading.
    QStringList scenes;             ///< Number and text of each scene heading, in capitals.
    QStringList characters, places; ///< most used first

    /// The index of the paragraph around \a position, in UTF-16 units of the text. -1 for none.
    int paragraphAt(int position) const;

    /// The index of the scene that \a paragraph belongs to, -1 for none.
    int sceneOf(int paragraph) const;

    /// Kind and page of \a paragraph and the words of the script, for a person to read. Empty for
    /// -1.
    QString placeOf(int paragraph) const;
};

/// The outline of the script in the Fountain \a text.
Outline outlineOf(const QString &text);

} // namespace Host

#endif
