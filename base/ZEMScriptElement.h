// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ZEMSCRIPTELEMENT_H
#define ZEMSCRIPTELEMENT_H

#include "base/zembase_export.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QTextBlockFormat>
#include <QtGui/QTextCharFormat>

class QTextBlock;

/// One proposal of a completion list. A plain value, carried along and not read here.
class ZEMCompletion
{
public:
    quint8 carriedByte = 0; ///< Application data.
    QString carriedText;    ///< Application data.
};

/// The completions of a kind of paragraph. A plain value, carried along and not read here.
class ZEMCompletionList
{
public:
    QList<ZEMCompletion> completions; ///< In the order of the application.
};

/// A kind of paragraph of the rich-text script (Action, Character, ...) and its formats.
///
/// A value record, copied whole. Every field of a default record is empty or zero. This library
/// stands in for the application's own base library, which knows what the carried fields mean.
class ZEMBASE_EXPORT ZEMScriptElement
{
public:
    /// The key of the two carried hashes.
    enum Action : int {};

    /// The first record of \a scriptElements with exactly this \a name. A default record, with an
    /// empty name, when there is none or when \a name is empty.
    static ZEMScriptElement find(const QList<ZEMScriptElement> &scriptElements,
                                 const QString &name);

    /// The record of the kind of paragraph that \a block belongs to, told by its formats.
    ///
    /// A block belongs to a record that has a name and a property in its two formats, and whose
    /// formats are in the block already: merging blockFormat into the block's format and charFormat
    /// into the block's character format would change neither. Of several such records the one with
    /// the most properties is given, of equals the first in the list. A default record, with an
    /// empty name, when the block belongs to none. So a record without any property is never found.
    static ZEMScriptElement find(const QList<ZEMScriptElement> &scriptElements,
                                 const QTextBlock &block);

    QString name;                  ///< Identity. Empty means no element.
    qint16 carriedShort = 0;       ///< Application data.
    QTextBlockFormat blockFormat;  ///< Merged into the format of a block of this kind.
    QTextCharFormat charFormat;    ///< Merged into the format of its text.
    ZEMCompletionList completions; ///< Application data.
    qint32 carriedNumber = 0;      ///< Application data.
    QString carriedText1;          ///< Application data.
    QString carriedText2;          ///< Application data.
    QString carriedText3;          ///< Application data.
    qint32 carriedNumber1 = 0;     ///< Application data.
    qint32 carriedNumber2 = 0;     ///< Application data.
    double carriedReal1 = 0;       ///< Application data.
    double carriedReal2 = 0;       ///< Application data.
    QHash<ZEMScriptElement::Action, QString> carriedActions1; ///< Application data.
    QHash<ZEMScriptElement::Action, QString> carriedActions2; ///< Application data.
};

#endif
