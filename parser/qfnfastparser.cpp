// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "model/qfndocument.h"
#include "parser/qfntokens_p.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr QLatin1String draftKey("DRAFT");
constexpr QLatin1String titlePageKeys[] = {
    QLatin1String("TITLE"),  QLatin1String("CREDIT"),    QLatin1String("AUTHOR"),
    QLatin1String("SOURCE"), QLatin1String("CONTACT"),   draftKey,
    QLatin1String("NOTES"),  QLatin1String("COPYRIGHT"),
};

constexpr QLatin1String sceneKeywords[] = {
    QLatin1String("EXT"),      QLatin1String("INT"),     QLatin1String("EST"),
    QLatin1String("INT./EXT"), QLatin1String("INT/EXT"), QLatin1String("I/E"),
};

constexpr QLatin1String transitionEnd("TO:");

struct StateType
{
    QFnFastParser::ParserState state;
    QFnElement::Type type;
};

constexpr StateType stateTypes[] = {
    {QFnFastParser::InAction, QFnElement::Action},
    {QFnFastParser::InDialogue, QFnElement::Dialogue},
    {QFnFastParser::InSceneHeading, QFnElement::SceneHeading},
    {QFnFastParser::InSectionHeading, QFnElement::SectionHeading},
    {QFnFastParser::InSynopsis, QFnElement::Synopsis},
    {QFnFastParser::InTransition, QFnElement::Transition},
    {QFnFastParser::InCharacter, QFnElement::Character},
    {QFnFastParser::InNotes, QFnElement::Notes},
    {QFnFastParser::InParenthetical, QFnElement::Parenthetical},
    {QFnFastParser::InPageBreak, QFnElement::PageBreak},
    {QFnFastParser::InGeneral, QFnElement::General},
};

bool isTitlePageKeyToken(const QFnToken &token)
{
    // Every line is asked, so the length decides before the text is copied for its upper case. It
    // may: where upper case makes several letters of one character, no key has them.
    const bool fits =
        std::any_of(std::begin(titlePageKeys), std::end(titlePageKeys),
                    [&token](QLatin1String key) { return key.size() == token.text.size(); });
    return fits && QFnFastParser::isTitlePageKey(token.text.toUpper());
}

/// The texts of the first \a count tokens, joined.
QString joinedText(const QList<QFnToken> &tokens, int count)
{
    QString text;
    appendTexts(tokens, count, &text);
    return text;
}

/// Whether the line equals its own upper case. A line without letters does.
bool isUpperCase(const QList<QFnToken> &tokens)
{
    const auto decides = [](QChar c) {
        return c.unicode() > 127 || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
    };
    for (const QFnToken &token : tokens) {
        const auto found = std::find_if(token.text.cbegin(), token.text.cend(), decides);
        if (found == token.text.cend())
            continue;
        if (found->unicode() <= 127)
            return false;
        // Beyond plain letters special casing counts, and a surrogate reaches over what follows it,
        // the next token too: only QString has the answer.
        const QString text = joinedText(tokens, tokens.size());
        return text == text.toUpper();
    }
    return true;
}

/// Whether the line, but for emphasis marks at its end, ends as "CUT TO:" does.
bool endsInTransition(const QList<QFnToken> &tokens)
{
    const auto behindLast =
        std::find_if_not(tokens.crbegin(), tokens.crend(), isEmphasisMark).base();
    const int count = int(std::distance(tokens.cbegin(), behindLast));
    return joinedText(tokens, count).endsWith(transitionEnd, Qt::CaseInsensitive);
}

/// Takes off what made the line a scene heading: the forced "." or the keyword, and one dot or
/// blank behind it.
void removeSceneMark(QList<QFnToken> *tokens, int index)
{
    tokens->removeAt(index);
    if (index == tokens->size())
        return;
    const QFnToken &next = tokens->at(index);
    if (isMark(next, '.') || next.kind == QFnToken::Space)
        tokens->removeAt(index);
}

} // namespace

QFnFastParser::QFnFastParser(QObject *parent)
    : QObject(parent)
    , document(nullptr)
    , position(-1)
    , tokenStart(-1)
    , state(Idle)
{
    document = new QFnDocument(this);
}

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
    QList<QFnToken> lineTokens;
    bool atBlockStart = true;
    while (currentToken.kind != QFnToken::EndOfInput) {
        const int passStart = position;
        parseLine(&lineTokens, atBlockStart);
        Q_ASSERT(position > passStart);
        atBlockStart = currentToken.kind == QFnToken::NewLine;
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

void QFnFastParser::parseLine(QList<QFnToken> *tokens, bool atBlockStart)
{
    readToken();
    if (isTitlePageKeyToken(currentToken))
        return readTitlePageEntry();
    if (currentToken.kind == QFnToken::PageBreakMark)
        return makePageBreak();

    readLine(tokens);
    if (!tokens->isEmpty()) {
        // The look-ahead stays the current token: the next pass tells by it how its line starts.
        readToken();
        dispatchLine(tokens, atBlockStart);
        rewind();
    } else if (state == InAction) {
        currentElement.text += currentToken.text;
    }
}

void QFnFastParser::readLine(QList<QFnToken> *tokens)
{
    removeFront(tokens, tokens->size());
    while (currentToken.kind != QFnToken::NewLine && currentToken.kind != QFnToken::EndOfInput) {
        tokens->append(currentToken);
        readToken();
    }
}

void QFnFastParser::rewind()
{
    position = tokenStart;
}

void QFnFastParser::makePageBreak()
{
    changeParserState(InPageBreak);
    currentElement.text = currentToken.text;
    changeParserState(Idle);
}

// What kind of line it is

void QFnFastParser::dispatchLine(QList<QFnToken> *tokens, bool atBlockStart)
{
    const bool blankLineFollows = currentToken.kind == QFnToken::NewLine;

    const auto first = std::find_if_not(tokens->cbegin(), tokens->cend(), isEmphasisMark);
    if (first == tokens->cend())
        return; // a line of emphasis marks alone gives nothing
    const int firstIndex = int(std::distance(tokens->cbegin(), first));

    if (first->kind == QFnToken::PageBreakMark) {
        // Behind emphasis marks a page break is lost, but it still closes the open element.
        const ParserState lineState = state;
        changeParserState(InPageBreak);
        return changeParserState(lineState);
    }
    if (isMark(tokens->first(), '!')) {
        tokens->removeFirst();
        return parseActionLine(tokens, false);
    }
    if (isMark(tokens->first(), '>') && isMark(tokens->last(), '<')) {
        tokens->removeFirst();
        tokens->removeLast();
        return parseActionLine(tokens, true);
    }
    if (!atBlockStart && state == InDialogue)
        return parseDialogueLine(tokens);
    if (!atBlockStart)
        return parseActionLine(tokens, false);
    if (blankLineFollows)
        return dispatchOneLineBlock(tokens, firstIndex);
    if (isUpperCase(*tokens) && !endsWithDblSpace(tokens))
        return parseCharacter(tokens);
    return parseActionLine(tokens, false);
}

void QFnFastParser::dispatchOneLineBlock(QList<QFnToken> *tokens, int firstIndex)
{
    const QFnToken first = tokens->at(firstIndex);
    if (first.text.startsWith(QLatin1Char('!')))
        return parseActionLine(tokens, false);
    if (isMark(first, '>')) {
        tokens->removeAt(firstIndex);
        return parseTransitionLine(tokens);
    }
    if (isMark(first, '=')) {
        tokens->removeAt(firstIndex);
        return parseSynopsis(tokens);
    }
    if (isMark(first, '#'))
        return parseSectionHeading(tokens);
    if (isMark(first, '.') || isSceneHeadingLine(tokens)) {
        removeSceneMark(tokens, firstIndex);
        return parseSceneHeading(tokens);
    }
    if (isUpperCase(*tokens) && endsInTransition(*tokens))
        return parseTransitionLine(tokens);
    return parseActionLine(tokens, false);
}

bool QFnFastParser::isTitlePageKey(QString key)
{
    return std::find(std::begin(titlePageKeys), std::end(titlePageKeys), key)
           != std::end(titlePageKeys);
}

bool QFnFastParser::isSceneHeadingToken(const QString &text)
{
    const auto matches = [&text](QLatin1String keyword) {
        return text.compare(keyword, Qt::CaseInsensitive) == 0;
    };
    if (std::any_of(std::begin(sceneKeywords), std::end(sceneKeywords), matches))
        return true;
    return text.size() >= 2 && text.at(0) == QLatin1Char('.') && text.at(1).isLetterOrNumber();
}

bool QFnFastParser::isSceneHeadingLine(QList<QFnToken> *tokens)
{
    const QFnToken missing;
    const auto at = [&](int index) { return tokens->value(index, missing); };

    if (!isSceneHeadingToken(at(0).text))
        return false;
    int index = isMark(at(1), '.') ? 2 : 1;
    if (isMark(at(index), '/')) {
        if (!isSceneHeadingToken(at(index + 1).text))
            return false;
        index += isMark(at(index + 2), '.') ? 3 : 2;
        return at(index).kind == QFnToken::Space;
    }
    const QFnToken behind = at(index);
    return behind.kind == QFnToken::Space
           || (!behind.text.isEmpty() && behind.text.at(0).isLetterOrNumber());
}

bool QFnFastParser::endsWithDblSpace(QList<QFnToken> *tokens) const
{
    const int size = tokens->size();
    return size >= 2 && tokens->at(size - 1).kind == QFnToken::Space
           && tokens->at(size - 2).kind == QFnToken::Space;
}

// The element under construction

void QFnFastParser::changeParserState(QFnFastParser::ParserState newState)
{
    if (state != Idle && !currentElement.text.isEmpty())
        appendCurrentElement();
    state = newState;
    const auto row = std::find_if(std::begin(stateTypes), std::end(stateTypes),
                                  [newState](const StateType &r) { return r.state == newState; });
    if (row != std::end(stateTypes))
        currentElement.type = row->type;
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
    // QMultiHash has no deprecation, but the type of the title page is a plain hash.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    document->titlePage.insertMulti(key, value);
    QT_WARNING_POP
}

void QFnFastParser::readTitlePageEntry()
{
    QString key = currentToken.text;
    if (key.toUpper() == draftKey) {
        // "Draft date": the blank and the word belong to the key, whatever they are.
        key += nextToken().text;
        key += nextToken().text;
    }
    readToken();
    if (!isMark(currentToken, ':'))
        return; // the key and this token are lost; the rest of the line is read as a line

    skipWhitespaces();
    QString value;
    readToken();
    while (currentToken.kind != QFnToken::EndOfInput) {
        if (currentToken.kind == QFnToken::NewLine && titlePageValueEnds())
            break;
        value += currentToken.text;
        readToken();
    }
    appendTitlePageElement(key, value);
}

bool QFnFastParser::titlePageValueEnds()
{
    const QFnToken lineEnd = currentToken;
    readToken();
    if (currentToken.kind == QFnToken::NewLine)
        return true;
    const bool keyFollows = isTitlePageKeyToken(currentToken);
    currentToken = lineEnd;
    rewind();
    return keyFollows;
}
