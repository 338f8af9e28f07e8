// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_EXPORTING_H
#define HOST_EXPORTING_H

class QByteArray;
class QTextDocument;

namespace Host {

/// The Fountain text of \a document, UTF-8, which importScript() reads as the same script.
///
/// \a document is not changed: a copy of it is laid out with the empty blocks, and the marks in its
/// text, that the library's writer does not add.
QByteArray exportScript(const QTextDocument &document);

} // namespace Host

#endif
