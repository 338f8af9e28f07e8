// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_EXPORTING_H
#define HOST_EXPORTING_H

#include <QtCore/QStringList>

class QTextDocument;

namespace Host {

/// The Fountain text of \a document. What importScript() made of a script, and HTML kept, is that
/// script again.
///
/// Rich text that somebody made or changed is written in forms that read back as it is. For each
/// paragraph that has none, one line is added to \a messages, which may be null: it names the
/// paragraph and says what becomes of it.
QString exportScript(const QTextDocument &document, QStringList *messages = nullptr);

/// The same of rich text that stands in \a html. A document that Qt wrote is read in parts, since
/// reading HTML takes some fifty times the memory of its text.
QString exportHtml(QString html, QStringList *messages = nullptr);

} // namespace Host

#endif
