// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_IMPORTING_H
#define HOST_IMPORTING_H

class QString;
class QTextDocument;

namespace Host {

/// Puts the script in the Fountain \a text into \a document, which must be empty, with the formats
/// of records(). One step of undo, and no text fails.
///
/// Beyond what the library does, the rich text has a title page of a line for each entry, whole
/// headings, and the stretches of a line of action in one block. An empty block above a note
/// or behind a comment tells it from one in a line of action.
void importScript(const QString &text, QTextDocument *document);

} // namespace Host

#endif
