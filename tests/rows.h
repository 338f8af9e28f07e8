// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ROWS_H
#define ROWS_H

#include <QtCore/QString>
#include <QtTest/QtTest>

#include <string_view>

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

inline QString textOf(std::u16string_view text)
{
    return operator""_s(text.data(), text.size());
}

template<size_t count>
void addRows(const Row (&rows)[count])
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    for (const Row &row : rows)
        QTest::newRow(row.name) << textOf(row.input) << textOf(row.expected);
}

/// A row for each of \a table, which a test takes by its index.
template<typename Named, size_t count>
void addIndices(const Named (&table)[count])
{
    QTest::addColumn<int>("index");
    for (const Named &row : table)
        QTest::newRow(row.name) << int(&row - table);
}

/// Compares what \a function makes of the input of a row with what it is to be.
template<typename Function>
void check(Function function)
{
    QFETCH(QString, input);
    QTEST(function(input), "expected");
}

#endif
