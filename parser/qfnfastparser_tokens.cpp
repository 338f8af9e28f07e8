// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include <utility>

namespace {

constexpr ushort endOfInput = 65535;

/// Whether the character at \a at ends the word in front of it. Some marks need two characters.
bool endsWord(const QChar *at, const QChar *end)
{
    const auto isFollowedBy = [=](char mark) { return at + 1 < end && at[1] == QLatin1Char(mark); };
    switch (at->unicode()) {
    case endOfInput:
    case '\n':
    case '\t':
    case ' ':
    case '#':
    case ':':
    case '^':
    case '(':
    case ')':
    case '>':
    case '<':
    case '.':
    case '_':
    case '*':
    case '=':
        return true;
    case '/':
        return isFollowedBy('*');
    case '[':
        return isFollowedBy('[');
    case ']':
        return isFollowedBy(']');
    case '\r':
        return isFollowedBy('\n');
    default:
        return false;
    }
}

} // namespace

QChar QFnFastParser::getch()
{
    ++position;
    return position < buffer.size() ? buffer.at(position) : QChar(endOfInput);
}

QChar QFnFastParser::nextChar() const
{
    return position + 1 < buffer.size() ? buffer.at(position + 1) : QChar(endOfInput);
}

bool QFnFastParser::isWhitespace(const QChar &character)
{
    return character == QLatin1Char(' ') || character == QLatin1Char('\t')
           || character == QLatin1Char('\n');
}

void QFnFastParser::skipWhitespaces()
{
    while (isWhitespace(nextChar()))
        ++position;
}

void QFnFastParser::skipWhitespaces(QList<QFnToken> *tokens)
{
    while (!tokens->isEmpty() && tokens->first().kind == QFnToken::Space)
        tokens->removeFirst();
}

QFnToken QFnFastParser::nextToken()
{
    readToken();
    return currentToken;
}

void QFnFastParser::readToken()
{
    tokenStart = position;
    for (;;) {
        const ushort character = getch().unicode();
        switch (character) {
        case endOfInput:
            return setToken(QFnToken::EndOfInput, QString());
        case '/':
            if (nextChar() != QLatin1Char('*'))
                return readWord();
            readBoneyard();
            continue;
        case '[':
            if (nextChar() != QLatin1Char('['))
                return readWord();
            ++position;
            return setToken(QFnToken::OpenNote, QStringLiteral("[["));
        case ']':
            if (nextChar() != QLatin1Char(']'))
                return readWord();
            ++position;
            return setToken(QFnToken::CloseNote, QStringLiteral("]]"));
        case '*':
            if (nextChar() != QLatin1Char('*'))
                return setToken(QFnToken::Word, QStringLiteral("*"));
            ++position;
            return setToken(QFnToken::DoubleStar, QStringLiteral("**"));
        case '\n':
            return setToken(QFnToken::NewLine, QStringLiteral("\n"));
        case '\r':
            if (nextChar() != QLatin1Char('\n'))
                return readWord();
            ++position;
            return setToken(QFnToken::NewLine, QStringLiteral("\r\n"));
        case '\t':
            return setToken(QFnToken::Space, QStringLiteral("\t"));
        case ' ':
            return setToken(QFnToken::Space, QStringLiteral(" "));
        case '=':
            return readEqualsSigns();
        case '.':
            return readDots();
        // A literal for each mark: its text is then shared by all its tokens, and most tokens of a
        // script are marks and blanks.
        case '!':
            return setToken(QFnToken::Word, QStringLiteral("!"));
        case '#':
            return setToken(QFnToken::Word, QStringLiteral("#"));
        case ':':
            return setToken(QFnToken::Word, QStringLiteral(":"));
        case '^':
            return setToken(QFnToken::Word, QStringLiteral("^"));
        case '(':
            return setToken(QFnToken::Word, QStringLiteral("("));
        case ')':
            return setToken(QFnToken::Word, QStringLiteral(")"));
        case '>':
            return setToken(QFnToken::Word, QStringLiteral(">"));
        case '<':
            return setToken(QFnToken::Word, QStringLiteral("<"));
        case '_':
            return setToken(QFnToken::Word, QStringLiteral("_"));
        default:
            return readWord();
        }
    }
}

void QFnFastParser::setToken(QFnToken::Kind kind, QString text)
{
    currentToken.kind = kind;
    currentToken.text = std::move(text);
}

void QFnFastParser::readWord()
{
    const int start = position;
    const int size = buffer.size();
    const QChar *characters = buffer.constData();
    int end = start + 1;
    while (end < size && !endsWord(characters + end, characters + size))
        ++end;
    position = end - 1;
    setToken(QFnToken::Word, QString(characters + start, end - start));
}

void QFnFastParser::readDots()
{
    const int start = position;
    while (nextChar() == QLatin1Char('.'))
        ++position;
    setToken(QFnToken::Word, buffer.mid(start, position - start + 1));
}

void QFnFastParser::readEqualsSigns()
{
    constexpr int pageBreakLength = 3;
    const int start = position;
    while (nextChar() == QLatin1Char('='))
        ++position;
    if (position - start + 1 >= pageBreakLength)
        return setToken(QFnToken::PageBreakMark, QStringLiteral("==="));
    position = start;
    setToken(QFnToken::Word, QStringLiteral("="));
}

void QFnFastParser::readBoneyard()
{
    closeStretch();
    ++position; // the "*" of the opening mark
    const int start = position + 1;
    QChar character = getch();
    while (character != QChar(endOfInput)
           && !(character == QLatin1Char('*') && nextChar() == QLatin1Char('/')))
        character = getch();

    auto *element = new QFnElement;
    element->type = QFnElement::Boneyard;
    element->text = buffer.mid(start, position - start);
    appendElement(element);

    if (character == QLatin1Char('*'))
        ++position;
    // A re-read of the token starts behind the boneyard, so that it is not stored twice.
    tokenStart = position;
}
