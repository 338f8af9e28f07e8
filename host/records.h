// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_RECORDS_H
#define HOST_RECORDS_H

#include "base/ZEMScriptElement.h"
#include "model/qfnelement.h"

#include <QtCore/QList>
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

/// Whether the text of \a block goes on in the line of the block above it, and is a block of its
/// own only because its kind is another: a note right below action, and the rest of the action
/// behind it, which nothing but a blank at its front can tell.
bool continuesLine(const QTextBlock &block);

/// The 12-point typewriter face of a script, the first of several customary families at hand.
QFont scriptFont();

} // namespace Host

#endif
