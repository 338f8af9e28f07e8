// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef FORMATS_H
#define FORMATS_H

#include "base/ZEMScriptElement.h"
#include "rows.h"

#include <QtCore/QStringList>
#include <QtGui/QFont>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

#include <algorithm>
#include <iterator>

// Compares formats by property, each a letter with its value: "a4 w75 i1 u1".

struct FormatLetter
{
    char16_t letter;
    int property;
    QMetaType::Type type;
};

// Two letters for one property are values of two types.
constexpr FormatLetter formatLetters[] = {
    {u'a', QTextFormat::BlockAlignment, QMetaType::Int},
    {u'A', QTextFormat::BlockAlignment, QMetaType::Double},
    {u'm', QTextFormat::BlockLeftMargin, QMetaType::Double},
    {u'w', QTextFormat::FontWeight, QMetaType::Int},
    {u'i', QTextFormat::FontItalic, QMetaType::Bool},
    {u'u', QTextFormat::TextUnderlineStyle, QMetaType::Int},
};

/// What a weight is above the one of tables, where bold is 75 in each version of Qt.
inline int weightShift(const FormatLetter &row, int number)
{
    return row.property == QTextFormat::FontWeight && number != 0 ? QFont::Bold - 75 : 0;
}

inline QString dump(const QTextFormat &format)
{
    QStringList parts;
    for (const FormatLetter &row : formatLetters) {
        const QVariant value = format.property(row.property);
        if (value.userType() == row.type)
            parts += QChar(row.letter)
                     + QString::number(value.toInt() - weightShift(row, value.toInt()));
    }
    return parts.size() == format.propertyCount() ? parts.join(u' ') : u"other properties"_s;
}

/// A line for each block: text, formats of the block, formats of its text, and the text of each
/// fragment that has other ones.
inline QString dump(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        lines += block.text() + u'|' + dump(block.blockFormat()) + u'|' + dump(block.charFormat());
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            if (it.fragment().charFormat() != block.charFormat())
                lines.last() += u'|' + it.fragment().text();
        }
    }
    return lines.join(u'\n');
}

/// The record that a line "name formats" tells.
inline ZEMScriptElement recordOf(const QString &line)
{
    ZEMScriptElement record;
    QStringList parts = line.split(u' ');
    record.name = parts.takeFirst();
    for (const QString &part : qAsConst(parts)) {
        const auto row =
            std::find_if(std::begin(formatLetters), std::end(formatLetters),
                         [&](const FormatLetter &r) { return part.at(0) == r.letter; });
        const int number = part.mid(1).toInt();
        const QVariant value = row->type == QMetaType::Double ? QVariant(double(number))
                               : row->type == QMetaType::Bool
                                   ? QVariant(number != 0)
                                   : QVariant(number + weightShift(*row, number));
        if (row->property < QTextFormat::FirstFontProperty)
            record.blockFormat.setProperty(row->property, value);
        else
            record.charFormat.setProperty(row->property, value);
    }
    return record;
}

inline QList<ZEMScriptElement> recordsOf(const QString &lines)
{
    QList<ZEMScriptElement> records;
    for (const QString &line : lines.split(u'|'))
        records += recordOf(line);
    return records;
}

#endif
