// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_TITLEPAGE_H
#define HOST_TITLEPAGE_H

#include "model/qfndocument.h"

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>

namespace Host {

/// The entries of a title page, key and value, in the order that a title page customarily has. The
/// library keeps them in a hash, without an order. Of several with one key the oldest comes first.
QList<QPair<QString, QString>> titleEntries(const QFnDocument::TitlePage &titlePage);

/// Whether the entry called \a key is one of those in the middle of the page, not at its foot.
bool isHeadOfTitlePage(const QString &key);

} // namespace Host

#endif
