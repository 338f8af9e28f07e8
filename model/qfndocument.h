// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNDOCUMENT_H
#define QFNDOCUMENT_H

#include "model/zemfountain_export.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

class QFnElement;

/// A whole script: its title page and one flat, ordered list of elements.
///
/// Owns every element in the list. A producer makes an element with new, appends its pointer and
/// from then on leaves its deletion to the document; no element may be in two lists. A
/// null pointer is skipped when the elements are deleted, but writer and renderer expect none.
///
/// Readers walk the two containers directly. Used by one thread at a time.
class ZEMFOUNTAIN_EXPORT QFnDocument : public QObject
{
    Q_OBJECT

public:
    /// A hash of strings that keeps several values for one key. Where a caller adds an entry that
    /// is not to replace another, that is QHash::insertMulti() on Qt 5 and QMultiHash::insert() on
    /// 6; QHash::insert() of Qt 5 replaces.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    using TitlePage = QHash<QString, QString>;
#else
    using TitlePage = QMultiHash<QString, QString>;
#endif

    /// An empty document, owned by \a parent, which may be null.
    explicit QFnDocument(QObject *parent);

    /// Deletes the elements.
    ~QFnDocument() override;

    /// Empties the title page and deletes the elements.
    void clear();

    /// Deletes the elements and keeps the title page.
    void clearContents();

    /// Title-page entries, key to value, both as the source text writes them: "Title" and "TITLE"
    /// are two keys. Multi-valued: of several entries with one key the newest comes first. The
    /// order of iteration is the hash's own, not that of the source text.
    TitlePage titlePage;

    QList<QFnElement *> elements; ///< The script, in order. Owned.

private:
    Q_DISABLE_COPY(QFnDocument)
};

#endif
