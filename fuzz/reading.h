// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef READING_H
#define READING_H

#include "parser/qfnfastparser.h"

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What must come out of a Fountain text, read off its tokens beside the parser, with no idea of
/// what kind of element a line becomes.
///
/// The rule. Every character that content() keeps comes out exactly once and in order, in the texts
/// of the elements that are no boneyards, but for these:
/// - a title-page entry, which goes to the title page; its key is lost where no ":" stands behind
///   it, and so is the token found there (for "Draft" that is the third token behind the key);
/// - a line that has "===" behind nothing but emphasis marks;
/// - a word that opens scene headings, at the front of a line: a heading loses it;
/// - what stands behind a "#" in a line that may be a heading: it comes out, but perhaps as the
///   scene number, and so out of order;
/// - what stands behind a U+FFFF that is met where a line would start.
class Reading
{
public:
    explicit Reading(const QString &text);

    QMultiHash<QString, QString> titlePage; ///< As it must be.
    QStringList words;  ///< The words, marks aside, that must come out in order.
    QString characters; ///< All that must come out, the order aside.

private:
    void readEntry();
    void readLine();
    void noteWords(const QList<QFnToken> &line);

    QFnFastParser tokens;
};

/// The characters of \a text that are no white space and never marks, in lower case: the one word
/// that a cue changes is put into lower case.
QString content(const QString &text);

/// \a text without its boneyards, whose texts are added to \a boneyards.
QString withoutBoneyards(const QString &text, QStringList *boneyards);

/// The texts of all tokens of \a text, joined, beyond a U+FFFF too.
QString joinedTokens(const QString &text);

#endif
