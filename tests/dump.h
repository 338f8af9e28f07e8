// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef DUMP_H
#define DUMP_H

#include "base/ZEMScriptElement.h"
#include "model/qfndocument.h"
#include "model/qfnelement.h"

#include <QtCore/QStringList>
#include <QtTest/QtTest>

#include <algorithm>
#include <string_view>

// Scripts as lines, for tables and failure messages: "Type|style|text", then "|#number" and
// "|depth n" where set. The style is any of b, i, u and c (centred); line ends and tabs in a text
// are "\n", "\r" and "\t" written out. A title-page entry is "@key|value".

/// Any UTF-16 text, lone surrogates too.
inline QString operator""_s(const char16_t *text, size_t size)
{
    return QString(reinterpret_cast<const QChar *>(text), int(size));
}

/// A case of a table with the columns input and expected.
struct Row
{
    const char *name;
    std::u16string_view input, expected;
};

template<size_t count>
void addRows(const Row (&rows)[count])
{
    const auto text = [](std::u16string_view v) { return operator""_s(v.data(), v.size()); };
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    for (const Row &row : rows)
        QTest::newRow(row.name) << text(row.input) << text(row.expected);
}

/// Compares what \a function makes of the input of a row with what it is to be.
template<typename Function>
void check(Function function)
{
    QFETCH(QString, input);
    QTEST(function(input), "expected");
}

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

/// The element that a line "Type|style|text" tells. The type may have its blank or not.
inline QFnElement elementOf(const QString &line)
{
    QFnElement element;
    element.type = QFnElement::toElementType(line.section(u'|', 0, 0).remove(u' '));
    const QString style = line.section(u'|', 1, 1);
    element.style.bold = style.contains(u'b');
    element.style.italic = style.contains(u'i');
    element.style.underline = style.contains(u'u');
    element.style.alignment = style.contains(u'c') ? Qt::AlignHCenter : Qt::AlignLeft;
    element.text = line.section(u'|', 2, 2).replace(u"\\n"_s, u"\n"_s);
    return element;
}

inline void appendElements(const QString &lines, QFnDocument *document)
{
    for (const QString &line : lines.split(u'\n', Qt::SkipEmptyParts))
        document->elements.append(new QFnElement(elementOf(line)));
}

// Formats as letters with values, each property with its own: "a4 w75 i1 u1".
const QMap<QChar, int> formatLetters{{u'a', QTextFormat::BlockAlignment},
                                     {u'm', QTextFormat::BlockLeftMargin},
                                     {u'i', QTextFormat::FontItalic},
                                     {u'u', QTextFormat::TextUnderlineStyle},
                                     {u'w', QTextFormat::FontWeight}};

inline QString dump(const QTextFormat &format)
{
    QStringList parts;
    const QMap<int, QVariant> properties = format.properties();
    for (auto it = properties.begin(); it != properties.end(); ++it)
        parts += formatLetters.key(it.key(), u'?') + QString::number(it.value().toInt());
    return parts.join(u' ');
}

/// The record that a line "name formats" tells.
inline ZEMScriptElement recordOf(const QString &line)
{
    ZEMScriptElement record;
    QStringList parts = line.split(u' ');
    record.name = parts.takeFirst();
    for (const QString &part : qAsConst(parts)) {
        const int property = formatLetters.value(part.at(0));
        const int number = part.mid(1).toInt();
        const QVariant value = part.at(0) == u'i'   ? QVariant(number != 0)
                               : part.at(0) == u'm' ? QVariant(qreal(number))
                                                    : QVariant(number);
        if (part.at(0) == u'a' || part.at(0) == u'm')
            record.blockFormat.setProperty(property, value);
        else
            record.charFormat.setProperty(property, value);
    }
    return record;
}

#endif
