// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNSTYLE_H
#define QFNSTYLE_H

#include "model/zemfountain_export.h"

#include <QtCore/qnamespace.h>

class QTextBlockFormat;
class QTextCharFormat;

/// The style of one stretch of script text: emphasis, and the alignment of its block.
///
/// A plain value, copied field by field. The two conversions are the only operations of the model
/// that need QtGui.
class ZEMFOUNTAIN_EXPORT QFnStyle
{
public:
    /// Plain text, aligned to the left.
    QFnStyle();

    /// A new character format with this emphasis. The weight is always set: QFont::Bold, or 0,
    /// which QTextCharFormat::fontWeight() gives back as it is and for which the thinnest face is
    /// drawn. An application that shows the text gives such text the weight QFont::Normal
    /// afterwards. Italics and the single underline are set only when on, so that merging the
    /// format never takes emphasis away but for the weight.
    QTextCharFormat toTextFormat() const;

    /// A new block format with this alignment and nothing else.
    QTextBlockFormat toBlockFormat() const;

    bool bold;               ///< Bold text. False after construction.
    bool italic;             ///< Italic text. False after construction.
    bool underline;          ///< Underlined text. False after construction.
    Qt::Alignment alignment; ///< Qt::AlignLeft after construction; Qt::AlignHCenter when centred.
};

#endif
