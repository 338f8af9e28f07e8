// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNTOKENS_P_H
#define QFNTOKENS_P_H

#include "model/qfnstyle.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QChar>
#include <QtCore/QStringView>

#include <algorithm>
#include <utility>
#include <vector>

/// What the steps of a parse work on: tokens that are views, and lines that are spans of them.
namespace Zem {

/// A token that owns nothing: its text is a piece of the buffer, of a literal or of a token of the
/// caller's. It is valid as long as that is, so none is kept beyond one call of the parser.
struct Token
{
    const QChar *start = nullptr;
    int size = 0;
    QFnToken::Kind kind = QFnToken::Word;

    QStringView text() const { return QStringView(start, size); }
    const QChar *end() const { return start + size; }
};

/// The tokens of one line, or what is left of them: a span over a vector that serves line after
/// line. To consume tokens is to make the span smaller.
class Line
{
public:
    explicit Line(std::vector<Token> *tokens)
        : Line(tokens->data(), tokens->data() + tokens->size())
    {}

    Token *begin() const { return m_begin; }
    Token *end() const { return m_end; }
    bool isEmpty() const { return m_begin == m_end; }
    int size() const { return int(m_end - m_begin); }
    const Token &first() const { return *m_begin; }
    const Token &last() const { return *(m_end - 1); }
    /// The token at \a index, or an empty word behind the end of the line.
    Token at(int index) const { return index < size() ? m_begin[index] : Token(); }

    void removeFirst() { ++m_begin; }
    void removeLast() { --m_end; }
    /// Removes the token at \a index. The few tokens in front of it, which are emphasis marks, move
    /// up by one.
    void removeAt(int index)
    {
        std::move_backward(m_begin, m_begin + index, m_begin + index + 1);
        ++m_begin;
    }
    void removeSpacesInFront()
    {
        while (!isEmpty() && first().kind == QFnToken::Space)
            removeFirst();
    }
    /// Removes the tokens in front of \a end, which stands in the line, and gives them.
    Line takeUntil(Token *end) { return Line(std::exchange(m_begin, end), end); }

private:
    Line(Token *begin, Token *end)
        : m_begin(begin)
        , m_end(end)
    {}

    Token *m_begin;
    Token *m_end;
};

/// Whether the token is exactly this mark of one character.
inline bool isMark(const Token &token, char mark)
{
    return token.size == 1 && *token.start == QLatin1Char(mark);
}

using EmphasisFlag = bool QFnStyle::*;

/// The flag that the token toggles, or null for a token that is no emphasis mark.
inline EmphasisFlag emphasisFlag(const Token &token)
{
    if (token.kind == QFnToken::DoubleStar)
        return &QFnStyle::bold;
    if (isMark(token, '*'))
        return &QFnStyle::italic;
    if (isMark(token, '_'))
        return &QFnStyle::underline;
    return nullptr;
}

inline bool isEmphasisMark(const Token &token)
{
    return emphasisFlag(token) != nullptr;
}

/// Views of the tokens of a caller, valid as long as these are.
std::vector<Token> viewsOf(const QList<QFnToken> &tokens);

/// Appends the texts of the line to \a text.
void appendTexts(const Line &line, QString *text);

/// The texts of the line, joined.
QString joinedText(const Line &line);

} // namespace Zem

#endif
