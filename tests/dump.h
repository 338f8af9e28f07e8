// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef DUMP_H
#define DUMP_H

#include "model/qfndocument.h"
#include "model/qfnelement.h"
#include "rows.h"

#include <QtCore/QStringList>

#include <algorithm>

// Prints scripts as lines, for tables and failure messages: "Type|style|text", then "|#number" and
// "|depth n" where set. The style is any of b, i, u and c (centred); line ends and tabs in a text
// are "\n", "\r" and "\t" written out. A title-page entry is "@key|value".

inline QString escaped(QString text)
{
    return text.replace(u"\n"_s, u"\\n"_s).replace(u"\r"_s, u"\\r"_s).replace(u"\t"_s, u"\\t"_s);
}

inline QString dump(const QFnElement &element)
{
    const QFnStyle &s = element.style;
    QString line = QFnElement::toString(element.type) + u'|';
    line += u"b"_s.left(s.bold) + u"i"_s.left(s.italic) + u"u"_s.left(s.underline);
    if (s.alignment != Qt::AlignLeft)
        line += s.alignment == Qt::AlignHCenter ? u"c"_s : QString::number(int(s.alignment));
    line += u'|' + escaped(element.text);
    if (!element.sceneNumber.isEmpty())
        line += u"|#"_s + element.sceneNumber;
    if (element.sectionDepth != 0)
        line += u"|depth "_s + QString::number(element.sectionDepth);
    return line;
}

/// The title page, sorted by key, then the elements.
inline QString dump(const QFnDocument &document)
{
    QStringList lines;
    for (auto it = document.titlePage.begin(); it != document.titlePage.end(); ++it)
        lines += u"@"_s + it.key() + u'|' + escaped(it.value());
    const auto key = [](const QString &line) { return line.section(u'|', 0, 0); };
    std::stable_sort(lines.begin(), lines.end(),
                     [key](const QString &a, const QString &b) { return key(a) < key(b); });
    for (const QFnElement *element : document.elements)
        lines += dump(*element);
    return lines.join(u'\n');
}

#endif
