// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_IMPORTING_H
#define HOST_IMPORTING_H

class QString;
class QTextCursor;
class QTextDocument;

namespace Host {

struct Paragraph;

/// Puts the script in the Fountain \a text into \a document, which must be empty, with the formats
/// of records(): a block for each paragraph. One step of undo, and no text fails.
void importScript(const QString &text, QTextDocument *document);

/// Makes the empty block under \a cursor the one of \a paragraph.
void insertParagraph(const Paragraph &paragraph, QTextCursor *cursor);

} // namespace Host

#endif
