// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_PAGES_H
#define HOST_PAGES_H

#include "host/reading.h"

#include <QtCore/QByteArray>
#include <QtCore/QVector>

/// A script as pages, laid out by counted letters and without a font: ten letters and six lines an
/// inch, whatever face the pages are drawn in later.
namespace Host {

constexpr int pageRows = 54; ///< The lines of a page, the first one inch below the upper edge.

/// One printed line, or a scene number beside it.
struct PageLine
{
    int row = 0;                ///< from 0 to pageRows - 1
    int column = 0;             ///< in letters from the left edge of the paper
    QVector<Stretch> stretches; ///< as printed: without notes, comments and the number of a scene
    int paragraph = -1;         ///< Index in the script, -1 for what the layout adds to it.
};

struct Page
{
    QVector<PageLine> lines; ///< from the top down
    int number = 0;          ///< from 1, 0 for a title page
};

/// The pages of \a script: its title page, if it has one, and at least one page behind it.
///
/// Working material (notes, comments, sections, synopses) is left out, in whichever line it stands.
/// A speech that goes over the end of a page gets "(MORE)" and "(CONT'D)". No page begins with a
/// transition or ends with a heading or a cue.
QVector<Page> layOut(const QVector<Paragraph> &script);

/// \a pages in plain letters, UTF-8, with a form feed between two of them.
QByteArray toPlainPages(const QVector<Page> &pages);

} // namespace Host

#endif
