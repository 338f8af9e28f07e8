// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNTOKENS_P_H
#define QFNTOKENS_P_H

#include "model/qfnstyle.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QList>
#include <QtCore/QString>

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

/// The texts of the first \a count tokens, joined.
inline QString joinedText(const QList<QFnToken> &tokens, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += tokens.at(i).text;
    return text;
}

/// Keeps the memory of the list, which serves line after line.
inline void removeAll(QList<QFnToken> *tokens)
{
    tokens->erase(tokens->begin(), tokens->end());
}

#endif
