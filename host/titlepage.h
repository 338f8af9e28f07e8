// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_TITLEPAGE_H
#define HOST_TITLEPAGE_H

#include "host/pages.h"
#include "model/qfndocument.h"

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

namespace Host {

/// The entries of a title page, key and value, in the order that a title page customarily has. The
/// library keeps them in a hash, without an order. Of several with one key the oldest comes first.
QList<QPair<QString, QString>> titleEntries(const QFnDocument::TitlePage &titlePage);

/// The title page of \a script: title, credit, author and source centred from a third of the way
/// down, contact and what has no place of its own lower left, date and copyright lower right. What
/// does not fit goes on behind it. None if the script has no entries with a value.
QVector<Page> titlePages(const QVector<Paragraph> &script);

/// The title of \a script in one line, empty if it has none.
QString titleOf(const QVector<Paragraph> &script);

} // namespace Host

#endif
