// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "model/qfnstyle.h"

#include <QtGui/QFont>
#include <QtGui/QTextBlockFormat>
#include <QtGui/QTextCharFormat>

QFnStyle::QFnStyle()
    : bold(false)
    , italic(false)
    , underline(false)
    , alignment(Qt::AlignLeft)
{}

QTextCharFormat QFnStyle::toTextFormat() const
{
    // Properties are set one by one: the convenience setters of QTextCharFormat add further ones,
    // and callers recognise a block by exactly the properties that it holds.
    QTextCharFormat format;
    if (underline)
        format.setProperty(QTextFormat::TextUnderlineStyle, int(QTextCharFormat::SingleUnderline));
    format.setProperty(QTextFormat::FontWeight, bold ? int(QFont::Bold) : 0);
    if (italic)
        format.setProperty(QTextFormat::FontItalic, true);
    return format;
}

QTextBlockFormat QFnStyle::toBlockFormat() const
{
    QTextBlockFormat format;
    format.setProperty(QTextFormat::BlockAlignment, int(alignment));
    return format;
}
