// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_PDF_H
#define HOST_PDF_H

class QByteArray;
class QTextDocument;

namespace Host {

/// A PDF of the script in \a document, whose blocks are told by records(): US Letter, 12 points,
/// six lines an inch, the title page by itself, pages numbered from the second of the script.
///
/// Working material is left out: sections, synopses, notes and comments.
QByteArray toPdf(const QTextDocument &document);

} // namespace Host

#endif
