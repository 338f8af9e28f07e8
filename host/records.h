// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_RECORDS_H
#define HOST_RECORDS_H

#include "base/ZEMScriptElement.h"
#include "model/qfnelement.h"

#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QFont>

class QTextBlock;

/// The host's kinds of paragraph.
namespace Host {

/// One line of the script page, in pixels of 1/96 inch as block formats have them: 12 points.
constexpr int linePixels = 16;

/// The records, for import and export alike. Scene and section headings stand in the list twice,
/// under the name without a blank first: that is the one a look-up by block gives.
///
/// A record has block formats alone, and only such as come through HTML unchanged. No record sets
/// weight, italics or underline, which belong to the text of the script.
const QList<ZEMScriptElement> &records();

/// The name of the record for the lines of the title page, which the library knows nothing of.
QString titlePageName();

/// The record that \a block belongs to, with an empty name if to none.
ZEMScriptElement recordOf(const QTextBlock &block);

/// The type of element that \a block holds. Undefined for a title page and for no record.
QFnElement::Type typeOf(const QTextBlock &block);

/// The colour that sets working material off: notes, comments, sections and synopses. Invalid for a
/// type that is printed.
QColor workingColour(QFnElement::Type type);

/// The state of the one block of a document that holds nothing but a blank line.
constexpr int blankLineState = 1;

/// The name of an anchor that carries the source of a paragraph through rich text, and back. No two
/// anchors of a file may have one name, so it has the \a number of the paragraph in it.
QString sourceAnchor(int number, const QString &source);
QString sourceOfAnchor(const QStringList &names);

/// The 12-point typewriter face of a script, the first of several customary families at hand.
QFont scriptFont();

} // namespace Host

#endif
