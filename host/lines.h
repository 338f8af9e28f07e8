// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_LINES_H
#define HOST_LINES_H

#include "host/reading.h"

#include <QtCore/QString>
#include <QtCore/QVector>

#include <limits>

/// Stretches of text as lines of a width that is counted in letters. An accent counts with its
/// letter, and a wide East Asian letter counts two.
namespace Host {

using Line = QVector<Stretch>;

QString textOf(const Line &line);
int lettersOf(const QString &text);

/// The UTF-16 units of \a line from \a start to \a end, which may be behind the last.
Line sliced(const Line &line, int start, int end = std::numeric_limits<int>::max());

/// \a line without the blanks at both ends.
Line trimmed(const Line &line);

/// The lines of \a stretches, parted at U+2028, without the notes and comments in them and without
/// the number of a scene. The blank beside a note goes with it, and so does a line that was nothing
/// else.
QVector<Line> printedLines(const QVector<Stretch> &stretches);

/// \a line broken into lines of at most \a width letters, which is 2 or more, between words where
/// that is possible. The blanks at the end of a line are left out. At least one line.
QVector<Line> wrapped(const Line &line, int width);

} // namespace Host

#endif
