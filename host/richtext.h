// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_RICHTEXT_H
#define HOST_RICHTEXT_H

#include <QtCore/QStringList>

class QTextCursor;
class QTextDocument;

/// Scripts as rich text: a block with the formats of records() for each paragraph.
namespace Host {

struct Paragraph;

/// Puts the script in the Fountain \a text into \a document, which must be empty. One step of undo,
/// and no text fails.
void importScript(const QString &text, QTextDocument *document);

/// Makes the empty block under \a cursor the one of \a paragraph.
void insertParagraph(const Paragraph &paragraph, QTextCursor *cursor);

/// The Fountain text of \a document. What importScript() made of a script, and HTML kept, is that
/// script again.
///
/// Rich text that somebody made or changed is written in forms that read back as it is. For each
/// paragraph that has none, one line is added to \a messages, which may be null: it names the
/// paragraph and says what becomes of it.
QString exportScript(const QTextDocument &document, QStringList *messages = nullptr);

/// The same of rich text that stands in \a html. A document that Qt wrote is read in parts, since
/// reading HTML takes some fifty times the memory of its text.
QString exportHtml(const QString &html, QStringList *messages = nullptr);

} // namespace Host

#endif
