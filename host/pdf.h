// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_PDF_H
#define HOST_PDF_H

#include "host/pages.h"

#include <QtGui/QPageSize>

class QByteArray;
class QString;

namespace Host {

/// A PDF of \a pages on \a paper that carries \a title, numbered from the second of the script on.
/// Each line stands at its place in whatever face is at hand.
///
/// \a problem gets one line about a face or letters that are missing, and is left as it is if none
/// are. The PDF is empty where most of the letters could not be printed.
QByteArray toPdf(const QVector<Page> &pages, const QString &title, QPageSize::PageSizeId paper,
                 QString *problem);

/// The paper that is customary in the country of the locale for paper: US Letter in a dozen
/// countries and where nothing is known, A4 in all others.
QPageSize::PageSizeId customaryPaper();

} // namespace Host

#endif
