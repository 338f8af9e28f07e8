// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "parser/qfntokens_p.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

using Zem::Token;

constexpr char16_t endOfInput = 65535;

/// One or two characters that are a token of their own.
struct Mark
{
    char16_t first;
    char16_t second; ///< 0: one character is the whole mark
    QFnToken::Kind kind;
    bool endsWord;     ///< else the mark counts at the start of a token only
    QString (*text)(); ///< shared by all tokens that are given to callers

    constexpr int size() const { return second == 0 ? 1 : 2; }
};

// What is no kind of token: the tokeniser goes on behind the comment.
constexpr QFnToken::Kind boneyard = QFnToken::Kind(0);

// Of marks that begin alike the longer one stands first, and they stand together.
constexpr Mark marks[] = {
    {'/', '*', boneyard, true, [] { return QString(); }},
    {'[', '[', QFnToken::OpenNote, true, [] { return QStringLiteral("[["); }},
    {']', ']', QFnToken::CloseNote, true, [] { return QStringLiteral("]]"); }},
    {'*', '*', QFnToken::DoubleStar, true, [] { return QStringLiteral("**"); }},
    {'*', 0, QFnToken::Word, true, [] { return QStringLiteral("*"); }},
    {'\n', 0, QFnToken::NewLine, true, [] { return QStringLiteral("\n"); }},
    {'\r', '\n', QFnToken::NewLine, true, [] { return QStringLiteral("\r\n"); }},
    {'\t', 0, QFnToken::Space, true, [] { return QStringLiteral("\t"); }},
    {' ', 0, QFnToken::Space, true, [] { return QStringLiteral(" "); }},
    {'=', 0, QFnToken::Word, true, [] { return QStringLiteral("="); }},
    {'.', 0, QFnToken::Word, true, [] { return QStringLiteral("."); }},
    {'!', 0, QFnToken::Word, false, [] { return QStringLiteral("!"); }},
    {'#', 0, QFnToken::Word, true, [] { return QStringLiteral("#"); }},
    {':', 0, QFnToken::Word, true, [] { return QStringLiteral(":"); }},
    {'^', 0, QFnToken::Word, true, [] { return QStringLiteral("^"); }},
    {'(', 0, QFnToken::Word, true, [] { return QStringLiteral("("); }},
    {')', 0, QFnToken::Word, true, [] { return QStringLiteral(")"); }},
    {'>', 0, QFnToken::Word, true, [] { return QStringLiteral(">"); }},
    {'<', 0, QFnToken::Word, true, [] { return QStringLiteral("<"); }},
    {'_', 0, QFnToken::Word, true, [] { return QStringLiteral("_"); }},
};

// The text of a page-break mark, however long the run of "=" is.
constexpr QChar pageBreakMark[] = {QLatin1Char('='), QLatin1Char('='), QLatin1Char('=')};

/// For each ASCII character the number of the first row of marks that begins with it, counted from
/// 1, and 0 for a character that begins none.
constexpr std::array<unsigned char, 128> firstRows = [] {
    std::array<unsigned char, 128> rows{};
    for (size_t i = std::size(marks); i > 0; --i)
        rows[marks[i - 1].first] = static_cast<unsigned char>(i);
    return rows;
}();

/// The mark that stands at \a at, or null. \a end is the end of the text.
inline const Mark *markAt(const QChar *at, const QChar *end)
{
    const char16_t first = at->unicode();
    if (first >= firstRows.size() || firstRows[first] == 0)
        return nullptr;
    const Mark *mark = marks + firstRows[first] - 1;
    for (; mark != std::end(marks) && mark->first == first; ++mark) {
        if (mark->second == 0 || (at + 1 < end && at[1] == QChar(mark->second)))
            return mark;
    }
    return nullptr;
}

/// Whether the character at \a at ends the word in front of it.
bool endsWord(const QChar *at, const QChar *end)
{
    const Mark *mark = markAt(at, end);
    return mark ? mark->endsWord : *at == QChar(endOfInput);
}

int wordLength(const QChar *start, const QChar *end)
{
    const QChar *at = start + 1;
    while (at < end && !endsWord(at, end))
        ++at;
    return int(at - start);
}

/// How many characters from \a start on are the same as the one there.
int runLength(const QChar *start, const QChar *end)
{
    return int(std::find_if(start, end, [start](QChar c) { return c != *start; }) - start);
}

/// The text of a token for a caller. Most tokens of a script are marks and blanks, whose text is
/// shared and not made anew.
QString ownText(const Token &token)
{
    if (token.kind == QFnToken::PageBreakMark)
        return QStringLiteral("===");
    const bool mayBeMark = token.size == 1 || token.size == 2;
    const Mark *mark = mayBeMark ? markAt(token.start, token.end()) : nullptr;
    return mark && mark->size() == token.size ? mark->text() : QString(token.start, token.size);
}

} // namespace

std::vector<Zem::Token> Zem::viewsOf(const QList<QFnToken> &tokens)
{
    std::vector<Token> views;
    views.reserve(size_t(tokens.size()));
    for (const QFnToken &token : tokens)
        views.push_back({token.text.constData(), int(token.text.size()), token.kind});
    return views;
}

void Zem::appendTexts(const Line &line, QString *text)
{
    // A new text gets the room that it needs, and that of the line end that a blank line below adds
    // to action. One that grows line by line keeps to QString's own growth, or each line would copy
    // all before it.
    if (text->isEmpty() && !line.isEmpty()) {
        int size = 2;
        for (const Token &token : line)
            size += token.size;
        text->reserve(size);
    }
    // Tokens that are neighbours in the buffer, as nearly all are, go in as one piece.
    for (const Token *token = line.begin(); token != line.end();) {
        const QChar *start = token->start;
        const QChar *end = token->end();
        for (++token; token != line.end() && token->start == end; ++token)
            end = token->end();
        text->append(start, int(end - start));
    }
}

QString Zem::joinedText(const Line &line)
{
    QString text;
    appendTexts(line, &text);
    return text;
}

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
    const Token token = readToken();
    currentToken.kind = token.kind;
    currentToken.text = ownText(token);
    return currentToken;
}

Zem::Token QFnFastParser::readToken()
{
    tokenStart = position;
    for (;;) {
        if (getch() == QChar(endOfInput))
            return {nullptr, 0, QFnToken::EndOfInput};
        const QChar *start = buffer.constData() + position;
        const QChar *end = buffer.constData() + buffer.size();
        const auto take = [this, start](QFnToken::Kind kind, int size) {
            position += size - 1;
            return Token{start, size, kind};
        };
        const Mark *mark = markAt(start, end);
        if (!mark)
            return take(QFnToken::Word, wordLength(start, end));
        if (mark->kind == boneyard) {
            readBoneyard();
            continue;
        }
        if (mark->first == '.')
            return take(QFnToken::Word, runLength(start, end));
        if (mark->first == '=') {
            const int length = runLength(start, end);
            if (length >= int(std::size(pageBreakMark))) {
                position += length - 1;
                return {pageBreakMark, int(std::size(pageBreakMark)), QFnToken::PageBreakMark};
            }
        }
        return take(mark->kind, mark->size());
    }
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
