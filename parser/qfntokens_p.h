// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNTOKENS_P_H
#define QFNTOKENS_P_H

#include "model/qfnstyle.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <algorithm>
#include <numeric>

/// Whether the token is exactly this mark of one character.
inline bool isMark(const QFnToken &token, char mark)
{
    return token.text.size() == 1 && token.text.at(0) == QLatin1Char(mark);
}

using EmphasisFlag = bool QFnStyle::*;

/// The flag that the token toggles, or null for a token that is no emphasis mark.
inline EmphasisFlag emphasisFlag(const QFnToken &token)
{
    if (token.kind == QFnToken::DoubleStar)
        return &QFnStyle::bold;
    if (isMark(token, '*'))
        return &QFnStyle::italic;
    if (isMark(token, '_'))
        return &QFnStyle::underline;
    return nullptr;
}

inline bool isEmphasisMark(const QFnToken &token)
{
    return emphasisFlag(token) != nullptr;
}

/// Appends the texts of the first \a count tokens to \a text.
inline void appendTexts(const QList<QFnToken> &tokens, int count, QString *text)
{
    if (count == 0)
        return;
    if (count == 1) {
        *text += tokens.first().text; // to an empty text this shares it and copies nothing
        return;
    }
    const auto end = tokens.cbegin() + count;
    const int start = text->size();
    const int length = std::accumulate(tokens.cbegin(), end, start, [](int sum, const QFnToken &t) {
        return sum + t.text.size();
    });
    // A new text gets the room that it needs. One that grows line by line must keep to QString's
    // own growth, or each line would copy all before it.
    if (start == 0)
        text->reserve(length);
    text->resize(length);
    QChar *to = text->data() + start;
    for (auto token = tokens.cbegin(); token != end; ++token)
        to = std::copy(token->text.cbegin(), token->text.cend(), to);
}

/// Removes the first \a count tokens. The list keeps its memory, as it serves line after line.
inline void removeFront(QList<QFnToken> *tokens, int count)
{
    tokens->erase(tokens->begin(), tokens->begin() + count);
}

/// Moves the texts of the first \a count tokens behind \a text.
inline void takeTexts(QList<QFnToken> *tokens, int count, QString *text)
{
    appendTexts(*tokens, count, text);
    removeFront(tokens, count);
}

#endif
