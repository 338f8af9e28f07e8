// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ELEMENTS_H
#define ELEMENTS_H

#include "model/qfndocument.h"
#include "model/qfnelement.h"
#include "rows.h"

// Reads elements from lines as dump.h prints them. A type may have its blank or not, or be a
// number, and an alignment beside "c" may be one too.

inline QFnElement elementOf(const QString &line)
{
    QFnElement element;
    const QString type = line.section(u'|', 0, 0).remove(u' ');
    bool isNumber = false;
    const int number = type.toInt(&isNumber);
    element.type = isNumber ? QFnElement::Type(number) : QFnElement::toElementType(type);
    const QString style = line.section(u'|', 1, 1);
    element.style.bold = style.contains(u'b');
    element.style.italic = style.contains(u'i');
    element.style.underline = style.contains(u'u');
    if (style.contains(u'c'))
        element.style.alignment = Qt::AlignHCenter;
    else if (const int alignment = style.toInt())
        element.style.alignment = Qt::Alignment(alignment);
    element.text = line.section(u'|', 2, 2).replace(u"\\n"_s, u"\n"_s);
    return element;
}

inline void appendElements(const QString &lines, QFnDocument *document)
{
    for (const QString &line : lines.split(u'\n', Qt::SkipEmptyParts))
        document->elements.append(new QFnElement(elementOf(line)));
}

#endif
