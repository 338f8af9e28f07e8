// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "reading.h"

#include <algorithm>

namespace {

constexpr QChar endMark(ushort(65535));

bool isTitleKey(const QFnToken &token)
{
    return QFnFastParser::isTitlePageKey(token.text.toUpper());
}

bool isEmphasis(const QFnToken &token)
{
    return token.kind == QFnToken::DoubleStar || token.text == QLatin1String("*")
           || token.text == QLatin1String("_");
}

} // namespace

Reading::Reading(const QString &text)
    : tokens(nullptr)
{
    tokens.buffer = text;
    while (tokens.currentToken.kind != QFnToken::EndOfInput) {
        tokens.nextToken();
        if (isTitleKey(tokens.currentToken))
            readEntry();
        else if (tokens.currentToken.kind != QFnToken::PageBreakMark)
            readLine();
    }
}

void Reading::readEntry()
{
    QString key = tokens.currentToken.text;
    if (key.compare(QLatin1String("DRAFT"), Qt::CaseInsensitive) == 0) {
        key += tokens.nextToken().text;
        key += tokens.nextToken().text;
    }
    if (tokens.nextToken().text != QLatin1String(":"))
        return;
    tokens.skipWhitespaces();
    QString value;
    tokens.nextToken();
    while (tokens.currentToken.kind != QFnToken::EndOfInput) {
        const QFnToken token = tokens.currentToken;
        if (token.kind == QFnToken::NewLine) {
            const QFnToken next = tokens.nextToken();
            if (next.kind == QFnToken::NewLine)
                break;
            tokens.position = tokens.tokenStart;
            tokens.currentToken = token;
            if (isTitleKey(next))
                break;
        }
        value += token.text;
        tokens.nextToken();
    }
    titlePage.insert(key, value);
}

void Reading::readLine()
{
    QList<QFnToken> line;
    while (tokens.currentToken.kind != QFnToken::NewLine
           && tokens.currentToken.kind != QFnToken::EndOfInput) {
        line.append(tokens.currentToken);
        tokens.nextToken();
    }
    if (line.isEmpty())
        return;
    // A look ahead as the parser's: it takes the text beyond a U+FFFF that ends a line.
    tokens.nextToken();
    tokens.position = tokens.tokenStart;
    noteWords(line);
}

void Reading::noteWords(const QList<QFnToken> &line)
{
    const auto first = std::find_if_not(line.cbegin(), line.cend(), isEmphasis);
    if (first == line.cend() || first->kind == QFnToken::PageBreakMark)
        return;
    const bool opensHeading = QFnFastParser::isSceneHeadingToken(line.first().text);
    const bool mayBeHeading = opensHeading || first->text == QLatin1String(".");
    bool inOrder = true;
    for (auto token = line.cbegin() + (opensHeading ? 1 : 0); token != line.cend(); ++token) {
        if (mayBeHeading && token->text == QLatin1String("#"))
            inOrder = false;
        const QString word = content(token->text);
        characters += word;
        if (inOrder && !word.isEmpty())
            words.append(word);
    }
}

QString content(const QString &text)
{
    static const QString marks = QStringLiteral("#:()<>._*=![]") + endMark;
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text) {
        if (!c.isSpace() && !marks.contains(c))
            kept += c.toLower();
    }
    return kept;
}

QString withoutBoneyards(const QString &text, QStringList *boneyards)
{
    QString kept;
    int at = 0;
    for (;;) {
        const int open = text.indexOf(QLatin1String("/*"), at);
        if (open < 0)
            return kept + text.mid(at);
        kept += text.mid(at, open - at);
        const int start = open + 2;
        int end = start;
        while (end < text.size() && text.at(end) != endMark
               && text.mid(end, 2) != QLatin1String("*/"))
            ++end;
        boneyards->append(text.mid(start, end - start));
        at = end < text.size() && text.at(end) != endMark ? end + 2 : end + 1;
    }
}

QString joinedTokens(const QString &text)
{
    QFnFastParser tokens(nullptr);
    tokens.buffer = text;
    QString joined;
    while (tokens.position + 1 < text.size())
        joined += tokens.nextToken().text;
    return joined;
}
