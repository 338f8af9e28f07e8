// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "model/literals_p.h"
#include "model/qfndocument.h"
#include "parser/qfntokens_p.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

using Zem::Line;
using Zem::Token;
using Zem::operator""_L1;

constexpr QLatin1String draftKey = "DRAFT"_L1;
constexpr QLatin1String titlePageKeys[] = {
    "TITLE"_L1,   "CREDIT"_L1, "AUTHOR"_L1, "SOURCE"_L1,
    "CONTACT"_L1, draftKey,    "NOTES"_L1,  "COPYRIGHT"_L1,
};

constexpr QLatin1String sceneKeywords[] = {
    "EXT"_L1, "INT"_L1, "EST"_L1, "INT./EXT"_L1, "INT/EXT"_L1, "I/E"_L1,
};

constexpr QLatin1String transitionEnd = "TO:"_L1;

// The type of each state from InAction on, in the order of the states.
constexpr QFnElement::Type stateTypes[] = {
    QFnElement::Action,         QFnElement::Dialogue, QFnElement::SceneHeading,
    QFnElement::SectionHeading, QFnElement::Synopsis, QFnElement::Transition,
    QFnElement::Character,      QFnElement::Notes,    QFnElement::Parenthetical,
    QFnElement::PageBreak,      QFnElement::General,
};
constexpr int firstState = QFnFastParser::InAction;
static_assert(std::size(stateTypes) == QFnFastParser::InGeneral - firstState + 1,
              "a type for every state but Idle");

/// Whether the upper case of \a text is \a key. Each character has its own: no key holds letters
/// that only a longer upper case, as that of a ligature, could give.
bool equalsInUpperCase(QStringView text, QLatin1String key)
{
    return text.size() == key.size()
           && std::equal(text.begin(), text.end(), key.begin(),
                         [](QChar c, char k) { return c.toUpper() == QLatin1Char(k); });
}

bool isTitlePageKeyToken(const Token &token)
{
    return std::any_of(std::begin(titlePageKeys), std::end(titlePageKeys),
                       [&](QLatin1String key) { return equalsInUpperCase(token.text(), key); });
}

bool isSceneKeyword(QStringView text)
{
    const auto matches = [text](QLatin1String keyword) {
        return text.compare(keyword, Qt::CaseInsensitive) == 0;
    };
    if (std::any_of(std::begin(sceneKeywords), std::end(sceneKeywords), matches))
        return true;
    return text.size() >= 2 && text.at(0) == QLatin1Char('.') && text.at(1).isLetterOrNumber();
}

bool isSceneHeading(const Line &line)
{
    if (!isSceneKeyword(line.at(0).text()))
        return false;
    int index = isMark(line.at(1), '.') ? 2 : 1;
    if (isMark(line.at(index), '/')) {
        if (!isSceneKeyword(line.at(index + 1).text()))
            return false;
        index += isMark(line.at(index + 2), '.') ? 3 : 2;
        return line.at(index).kind == QFnToken::Space;
    }
    const Token behind = line.at(index);
    return behind.kind == QFnToken::Space || (behind.size > 0 && behind.start->isLetterOrNumber());
}

bool endsInTwoSpaces(const Line &line)
{
    return line.size() >= 2 && line.at(line.size() - 1).kind == QFnToken::Space
           && line.at(line.size() - 2).kind == QFnToken::Space;
}

/// Whether the line equals its own upper case. A line without letters does.
bool isUpperCase(const Line &line)
{
    for (const Token &token : line) {
        for (const QChar c : token.text()) {
            if (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
                return false;
            if (c.unicode() > 127) {
                // Only QString knows the upper case of all letters. It needs the whole line: half
                // of a surrogate pair has an effect on the character behind it.
                const QString text = joinedText(line);
                return text == text.toUpper();
            }
        }
    }
    return true;
}

/// Whether the line, but for emphasis marks at its end, ends as "CUT TO:" does.
bool endsInTransition(Line line)
{
    while (!line.isEmpty() && isEmphasisMark(line.last()))
        line.removeLast();
    return joinedText(line).endsWith(transitionEnd, Qt::CaseInsensitive);
}

/// Takes off what made the line a scene heading: the forced "." or the keyword, and one dot or
/// blank behind it.
void removeSceneMark(int index, Line *line)
{
    line->removeAt(index);
    const Token next = line->at(index);
    if (isMark(next, '.') || next.kind == QFnToken::Space)
        line->removeAt(index);
}

} // namespace

QFnFastParser::QFnFastParser(QObject *parent)
    : QObject(parent)
    , document(new QFnDocument(this))
    , position(-1)
    , tokenStart(-1)
    , state(Idle)
{}

QFnFastParser::~QFnFastParser() = default;

// The parse as a whole

bool QFnFastParser::parse(const QString &text)
{
    buffer = text;
    tokenStart = -1;
    currentElement.clear();
    currentToken = QFnToken();
    return parseBuffer();
}

bool QFnFastParser::parseBuffer()
{
    initParser();
    // The memory of a line serves the next one. No view of the buffer outlives this call.
    std::vector<Token> lineTokens;
    bool atBlockStart = true;
    while (currentToken.kind != QFnToken::EndOfInput) {
        const int passStart = position;
        const QFnToken::Kind last = parseLine(&lineTokens, atBlockStart).kind;
        Q_ASSERT(position > passStart);
        atBlockStart = last == QFnToken::NewLine;
        if (last == QFnToken::EndOfInput)
            currentToken = {last, QString()};
    }
    // Stored whatever it holds: an open Action element has no other end than this one.
    appendCurrentElement();
    return true;
}

void QFnFastParser::initParser()
{
    position = -1;
    state = Idle;
    document->clear();
}

/// Reads the next line, or what stands for one, and gives the token that the next pass looks at.
Zem::Token QFnFastParser::parseLine(std::vector<Token> *lineTokens, bool atBlockStart)
{
    Token token = readToken();
    if (isTitlePageKeyToken(token))
        return readTitlePageEntry(token);
    if (token.kind == QFnToken::PageBreakMark) {
        changeParserState(InPageBreak);
        currentElement.text = token.text().toString();
        changeParserState(Idle);
        return token;
    }
    lineTokens->clear();
    for (; token.kind != QFnToken::NewLine && token.kind != QFnToken::EndOfInput;
         token = readToken())
        lineTokens->push_back(token);
    if (lineTokens->empty()) {
        if (state == InAction)
            currentElement.text.append(token.start, token.size);
        return token;
    }
    // The token behind the line tells what the line is. The next pass reads it again, and tells by
    // it whether its own line opens a block.
    const Token lookAhead = readToken();
    dispatchLine(Line(lineTokens), atBlockStart, lookAhead.kind == QFnToken::NewLine);
    position = tokenStart;
    return lookAhead;
}

// What kind of line it is

void QFnFastParser::dispatchLine(Line line, bool atBlockStart, bool blankLineFollows)
{
    const Token *first = std::find_if_not(line.begin(), line.end(), Zem::isEmphasisMark);
    if (first == line.end())
        return; // a line of emphasis marks alone gives nothing

    if (first->kind == QFnToken::PageBreakMark) {
        // Behind emphasis marks a page break is lost, but it still closes the open element.
        const ParserState lineState = state;
        changeParserState(InPageBreak);
        return changeParserState(lineState);
    }
    if (isMark(line.first(), '!')) {
        line.removeFirst();
        return takeActionLine(line, false);
    }
    if (isMark(line.first(), '>') && isMark(line.last(), '<')) {
        line.removeFirst();
        line.removeLast();
        return takeActionLine(line, true);
    }
    if (!atBlockStart && state == InDialogue)
        return takeDialogueLine(line);
    if (!atBlockStart)
        return takeActionLine(line, false);
    if (blankLineFollows)
        return dispatchOneLineBlock(line, int(first - line.begin()));
    if (isUpperCase(line) && !endsInTwoSpaces(line))
        return takeCharacter(line);
    return takeActionLine(line, false);
}

void QFnFastParser::dispatchOneLineBlock(Line line, int firstIndex)
{
    const Token first = line.at(firstIndex);
    if (first.text().startsWith(QLatin1Char('!')))
        return takeActionLine(line, false);
    if (isMark(first, '>')) {
        line.removeAt(firstIndex);
        return takeStyledLine(line, InTransition);
    }
    if (isMark(first, '=')) {
        line.removeAt(firstIndex);
        return takeStyledLine(line, InSynopsis);
    }
    if (isMark(first, '#'))
        return takeSectionHeading(line);
    if (isMark(first, '.') || isSceneHeading(line)) {
        removeSceneMark(firstIndex, &line);
        return takeSceneHeading(line);
    }
    if (isUpperCase(line) && endsInTransition(line))
        return takeStyledLine(line, InTransition);
    return takeActionLine(line, false);
}

bool QFnFastParser::isTitlePageKey(QString key)
{
    return std::find(std::begin(titlePageKeys), std::end(titlePageKeys), key)
           != std::end(titlePageKeys);
}

bool QFnFastParser::isSceneHeadingToken(const QString &text)
{
    return isSceneKeyword(text);
}

bool QFnFastParser::isSceneHeadingLine(QList<QFnToken> *tokens)
{
    std::vector<Token> views = Zem::viewsOf(*tokens);
    return isSceneHeading(Line(&views));
}

bool QFnFastParser::endsWithDblSpace(QList<QFnToken> *tokens) const
{
    std::vector<Token> views = Zem::viewsOf(*tokens);
    return endsInTwoSpaces(Line(&views));
}

// The element under construction

void QFnFastParser::changeParserState(QFnFastParser::ParserState newState)
{
    if (state != Idle && !currentElement.text.isEmpty())
        appendCurrentElement();
    state = newState;
    if (newState >= firstState && newState <= InGeneral)
        currentElement.type = stateTypes[newState - firstState];
}

void QFnFastParser::appendElement(QFnElement *element)
{
    if (!element)
        return;
    if (element->type == QFnElement::Action && element->text.endsWith(QLatin1Char('\n')))
        element->text.chop(1);
    document->elements.append(element);
}

void QFnFastParser::appendCurrentElement()
{
    auto *element = new QFnElement(std::move(currentElement));
    currentElement.clear();
    appendElement(element);
}

void QFnFastParser::closeStretch()
{
    if (currentElement.text.isEmpty())
        return;
    const QFnElement::Type type = currentElement.type;
    appendCurrentElement();
    currentElement.type = type;
}

// The title page

void QFnFastParser::appendTitlePageElement(QString key, QString value)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // QMultiHash has no deprecation, but the type of the title page is a plain hash.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    document->titlePage.insertMulti(key, value);
    QT_WARNING_POP
#else
    document->titlePage.insert(key, value);
#endif
}

/// Reads the entry that \a keyToken begins, and gives the token at which the line of the next pass
/// has its end or its start.
Zem::Token QFnFastParser::readTitlePageEntry(const Token &keyToken)
{
    QString key = keyToken.text().toString();
    if (equalsInUpperCase(key, draftKey)) {
        // "Draft date": the blank and the word belong to the key, whatever they are.
        for (int i = 0; i < 2; ++i) {
            const Token part = readToken();
            key.append(part.start, part.size);
        }
    }
    Token token = readToken();
    if (!isMark(token, ':'))
        return token; // the key and this token are lost; the rest of the line is read as a line

    skipWhitespaces();
    QString value;
    token = readToken();
    while (token.kind != QFnToken::EndOfInput) {
        if (token.kind == QFnToken::NewLine && titlePageValueEnds())
            break;
        value.append(token.start, token.size);
        token = readToken();
    }
    appendTitlePageElement(key, value);
    return token;
}

/// Whether the value of an entry ends with the line end that was just read: at a blank line, which
/// is taken along, or in front of a key.
bool QFnFastParser::titlePageValueEnds()
{
    const Token next = readToken();
    if (next.kind == QFnToken::NewLine)
        return true;
    position = tokenStart;
    return isTitlePageKeyToken(next);
}
