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

// Compares formats by property, each a letter with its value: "a4 w75 i1 u1".

template<typename Type>
QVariant valueOf(int number)
{
    return Type(number);
}

struct FormatLetter
{
    char16_t letter;
    int property;
    QVariant (*value)(int number);
};

// Two letters for one property are values of two types.
constexpr FormatLetter formatLetters[] = {
    {u'a', QTextFormat::BlockAlignment, valueOf<int>},
    {u'A', QTextFormat::BlockAlignment, valueOf<double>},
    {u'm', QTextFormat::BlockLeftMargin, valueOf<double>},
    {u'w', QTextFormat::FontWeight, valueOf<int>},
    {u'i', QTextFormat::FontItalic, valueOf<bool>},
    {u'u', QTextFormat::TextUnderlineStyle, valueOf<int>},
};

/// What a weight is above the one of tables, where bold is 75 in each version of Qt.
inline int weightShift(const FormatLetter &row, int number)
{
    return row.letter == u'w' && number != 0 ? QFont::Bold - 75 : 0;
}

inline QString dump(const QTextFormat &format)
{
    QStringList parts;
    for (const FormatLetter &row : formatLetters) {
        const QVariant value = format.property(row.property);
        const int number = value.toInt() - weightShift(row, value.toInt());
        if (value.userType() == row.value(0).userType())
            parts += QChar(row.letter) + QString::number(number);
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

/// The record that a line "name=formats" tells.
inline ZEMScriptElement recordOf(const QString &line)
{
    ZEMScriptElement record;
    record.name = line.section(u'=', 0, 0);
    for (const QString &part : line.section(u'=', 1).split(u' ', Qt::SkipEmptyParts)) {
        const int number = part.mid(1).toInt();
        for (const FormatLetter &row : formatLetters) {
            if (part.at(0) != row.letter)
                continue;
            QTextFormat *format = &record.charFormat;
            if (row.property < QTextFormat::FirstFontProperty)
                format = &record.blockFormat;
            format->setProperty(row.property, row.value(number + weightShift(row, number)));
        }
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
