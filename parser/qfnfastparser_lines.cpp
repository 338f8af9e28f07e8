// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "model/literals_p.h"
#include "parser/qfntokens_p.h"

#include <algorithm>

namespace {

using Zem::Line;
using Zem::Token;
using Zem::operator""_L1;

constexpr QLatin1String continued = "CONT'D"_L1;
constexpr QStringView continuedWritten = u"cont'd";
constexpr QLatin1String tabInAction = "    "_L1;

/// Takes the emphasis marks at the front of the line off and toggles their flags in \a style. Gives
/// whether there was a mark.
bool toggleEmphasis(Line *line, QFnStyle *style)
{
    const Token *start = line->begin();
    for (; !line->isEmpty() && isEmphasisMark(line->first()); line->removeFirst()) {
        const Zem::EmphasisFlag flag = emphasisFlag(line->first());
        style->*flag = !(style->*flag);
    }
    return line->begin() != start;
}

/// Moves the tokens in front of the first that \a isEnd accepts from the line to \a text, and drops
/// that one. Gives whether there was one.
template<typename Test>
bool takeTextUntil(Test isEnd, Line *line, QString *text)
{
    Token *end = std::find_if(line->begin(), line->end(), isEnd);
    const bool found = end != line->end();
    appendTexts(line->takeUntil(end), text);
    if (found)
        line->removeFirst();
    return found;
}

/// The test for the token that is exactly \a mark.
auto isExactly(char mark)
{
    return [mark](const Token &token) { return isMark(token, mark); };
}

/// Puts blanks for the tabs from index \a start on.
void expandTabs(int start, QString *text)
{
    if (text->indexOf(QLatin1Char('\t'), start) < 0)
        return;
    const QString tail = text->mid(start).replace(QLatin1Char('\t'), tabInAction);
    text->truncate(start);
    *text += tail;
}

void trimSpaces(Line *line)
{
    line->removeSpacesInFront();
    while (!line->isEmpty() && line->last().kind == QFnToken::Space)
        line->removeLast();
}

/// Hands the line of a caller to \a step as views, and empties it.
template<typename Step>
void consume(QList<QFnToken> *tokens, Step step)
{
    std::vector<Token> views = Zem::viewsOf(*tokens);
    step(Line(&views));
    tokens->clear();
}

} // namespace

// The operations for callers

void QFnFastParser::parseText(QList<QFnToken> *tokens, QFnToken *, Qt::Alignment alignment)
{
    consume(tokens, [=](Line line) { takeText(line, alignment); });
}

void QFnFastParser::parseNotes(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeText(line, Qt::AlignLeft); });
}

void QFnFastParser::parseSynopsis(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeStyledLine(line, InSynopsis); });
}

void QFnFastParser::parseGeneralLine(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeStyledLine(line, InGeneral); });
}

void QFnFastParser::parseTransitionLine(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeStyledLine(line, InTransition); });
}

void QFnFastParser::parseActionLine(QList<QFnToken> *tokens, bool centered)
{
    consume(tokens, [=](Line line) { takeActionLine(line, centered); });
}

void QFnFastParser::parseDialogueLine(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeDialogueLine(line); });
}

void QFnFastParser::parseCharacter(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeCharacter(line); });
}

void QFnFastParser::parseSceneHeading(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeSceneHeading(line); });
}

void QFnFastParser::parseSectionHeading(QList<QFnToken> *tokens)
{
    consume(tokens, [this](Line line) { takeSectionHeading(line); });
}

// The one implementation, on views

void QFnFastParser::takeText(Line line, Qt::Alignment alignment)
{
    const QFnElement::Type lineType = currentElement.type;
    const ParserState lineState = state;
    QFnStyle style;
    style.alignment = alignment;
    const auto startStretch = [&] {
        currentElement.type = lineType;
        currentElement.style = style;
    };

    if (alignment.testFlag(Qt::AlignHCenter) && state == InAction)
        trimSpaces(&line);

    while (!line.isEmpty()) {
        if (line.first().kind == QFnToken::OpenNote) {
            takeNote(&line);
            currentElement.type = lineType;
            // What stands behind a note goes on as what the line is. A note at its end leaves the
            // state Idle, so that a blank line adds nothing and the next line starts anew.
            if (!line.isEmpty() && line.first().kind != QFnToken::OpenNote) {
                changeParserState(lineState);
                startStretch();
            }
            continue;
        }
        if (toggleEmphasis(&line, &style)) {
            closeStretch();
            startStretch();
        }
        if (!line.isEmpty())
            takePlainText(&line);
    }
}

void QFnFastParser::takePlainText(Line *line)
{
    // The first token is text whatever it is: behind a mark an opening note is.
    Token *end = std::find_if(line->begin() + 1, line->end(), [](const Token &token) {
        return token.kind == QFnToken::OpenNote || isEmphasisMark(token);
    });
    const int start = int(currentElement.text.size());
    appendTexts(line->takeUntil(end), &currentElement.text);
    if (state == InAction)
        expandTabs(start, &currentElement.text);
}

void QFnFastParser::takeNote(Line *line)
{
    const auto isClose = [](const Token &token) { return token.kind == QFnToken::CloseNote; };
    changeParserState(InNotes);
    line->removeFirst();
    takeTextUntil(isClose, line, &currentElement.text);
    changeParserState(Idle);
}

void QFnFastParser::takeStyledLine(const Line &line, ParserState lineState)
{
    changeParserState(lineState);
    takeText(line, Qt::AlignLeft);
    changeParserState(Idle);
}

void QFnFastParser::takeActionLine(const Line &line, bool centered)
{
    const Qt::Alignment alignment = centered ? Qt::AlignHCenter : Qt::AlignLeft;
    if (state != InAction)
        changeParserState(InAction);
    if (currentElement.style.alignment != alignment) {
        closeStretch();
        currentElement.type = QFnElement::Action;
        currentElement.style = QFnStyle();
        currentElement.style.alignment = alignment;
    }
    // The text of the last line is still open: this line goes right behind it, with nothing between
    // the two. The only line end in action is that of a blank line.
    takeText(line, alignment);
}

void QFnFastParser::takeDialogueLine(Line line)
{
    if (state != InDialogue)
        changeParserState(InDialogue);
    while (!line.isEmpty()) {
        if (takeTextUntil(isExactly('('), &line, &currentElement.text))
            takeParenthetical(&line);
    }
    closeStretch();
}

void QFnFastParser::takeParenthetical(Line *line)
{
    changeParserState(InParenthetical);
    takeTextUntil(isExactly(')'), line, &currentElement.text);
    appendCurrentElement();
    changeParserState(InDialogue);
}

void QFnFastParser::takeCharacter(const Line &line)
{
    changeParserState(InCharacter);
    for (Token &token : line) {
        if (token.text() == continued)
            token.start = continuedWritten.data();
    }
    appendTexts(line, &currentElement.text);
    currentElement.text = currentElement.text.trimmed();
    // Even without text: the line of one blank that a cue can be has a speech below it.
    appendCurrentElement();
    changeParserState(InDialogue);
}

void QFnFastParser::takeSceneHeading(Line line)
{
    changeParserState(InSceneHeading);
    if (!line.isEmpty()) {
        line.removeSpacesInFront();
        QString sceneNumber;
        while (!line.isEmpty()) {
            if (takeTextUntil(isExactly('#'), &line, &currentElement.text))
                takeTextUntil(isExactly('#'), &line, &sceneNumber);
        }
        currentElement.sceneNumber = sceneNumber;
    }
    appendCurrentElement();
    changeParserState(Idle);
}

void QFnFastParser::takeSectionHeading(Line line)
{
    changeParserState(InSectionHeading);
    int depth = 0;
    while (!line.isEmpty() && isMark(line.first(), '#')) {
        line.removeFirst();
        ++depth;
    }
    // Stays for the next element if there is no text: only storing an element clears it.
    currentElement.sectionDepth = depth;
    line.removeSpacesInFront();
    appendTexts(line, &currentElement.text);
    changeParserState(Idle);
}
