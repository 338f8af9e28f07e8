// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ROWS_H
#define ROWS_H

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QStringList>
#include <QtTest/QtTest>

/// Any UTF-16 text, lone surrogates too.
inline QString operator""_s(const char16_t *text, size_t size)
{
    return QString(reinterpret_cast<const QChar *>(text), int(size));
}

/// \a text with its escapes resolved, those of C++ for a line end, a tab, a UTF-16 unit (\\u and
/// four digits) and the backslash.
inline QString unescaped(const QString &text)
{
    const QHash<QChar, QChar> escapes = {
        {u'n', u'\n'}, {u'r', u'\r'}, {u't', u'\t'}, {u'\\', u'\\'}};
    QString plain;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) != u'\\') {
            plain += text.at(i);
        } else if (text.at(++i) == u'u') {
            plain += QChar(text.mid(i + 1, 4).toUShort(nullptr, 16));
            i += 4;
        } else {
            plain += escapes.value(text.at(i));
        }
    }
    return plain;
}

/// Adds the cases of the \a tables in tests/cases: one a line, its name, its input and what is
/// expected of it, with tabs between them and escapes in them. Lines behind "#" are remarks.
inline void addCases(const QStringList &tables)
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    for (const QString &table : tables) {
        QFile file(QStringLiteral(CASES "/") + table + u".tsv"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
            const QStringList parts = line.split(u'\t');
            if (line.isEmpty() || line.startsWith(u'#'))
                continue;
            QVERIFY2(parts.size() == 3, qPrintable(line));
            QTest::newRow(qPrintable(parts.at(0)))
                << unescaped(parts.at(1)) << unescaped(parts.at(2));
        }
    }
}

/// Compares what \a function makes of the input of a row with what it is to be.
template<typename Function>
void check(Function function)
{
    QFETCH(QString, input);
    QTEST(function(input), "expected");
}

#endif
