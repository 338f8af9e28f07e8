// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "parser/qfntokens_p.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr QLatin1String continued("CONT'D");
constexpr QLatin1String tabInAction("    ");

/// Takes the emphasis marks at the front of the line off and toggles their flags in \a style.
/// Whether there was any.
bool toggleEmphasis(QList<QFnToken> *tokens, QFnStyle *style)
{
    bool toggled = false;
    while (!tokens->isEmpty()) {
        const EmphasisFlag flag = emphasisFlag(tokens->first());
        if (!flag)
            break;
        style->*flag = !(style->*flag);
        toggled = true;
        tokens->removeFirst();
    }
    return toggled;
}

/// Moves the text of the line up to the next \a mark behind \a text, and drops the mark.
/// Whether there was one.
bool takeTextUntil(char mark, QList<QFnToken> *tokens, QString *text)
{
    const auto found = std::find_if(tokens->cbegin(), tokens->cend(),
                                    [mark](const QFnToken &token) { return isMark(token, mark); });
    const bool hasMark = found != tokens->cend();
    takeTexts(tokens, int(std::distance(tokens->cbegin(), found)), text);
    if (hasMark)
        tokens->removeFirst();
    return hasMark;
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

void dropSpacesAtEnd(QList<QFnToken> *tokens)
{
    while (!tokens->isEmpty() && tokens->last().kind == QFnToken::Space)
        tokens->removeLast();
}

} // namespace

void QFnFastParser::parseText(QList<QFnToken> *tokens, QFnToken *token, Qt::Alignment alignment)
{
    Q_UNUSED(token)
    const QFnElement::Type lineType = currentElement.type;
    const ParserState lineState = state;
    QFnStyle style;
    style.alignment = alignment;
    const auto startStretch = [&] {
        currentElement.type = lineType;
        currentElement.style = style;
    };

    if (alignment.testFlag(Qt::AlignHCenter) && state == InAction) {
        skipWhitespaces(tokens);
        dropSpacesAtEnd(tokens);
    }

    while (!tokens->isEmpty()) {
        if (tokens->first().kind == QFnToken::OpenNote) {
            takeNote(tokens);
            currentElement.type = lineType;
            // What stands behind a note goes on as what the line is. A note at its end leaves the
            // state Idle, so that a blank line adds nothing and the next line starts anew.
            if (!tokens->isEmpty() && tokens->first().kind != QFnToken::OpenNote) {
                changeParserState(lineState);
                startStretch();
            }
            continue;
        }
        if (toggleEmphasis(tokens, &style)) {
            closeStretch();
            startStretch();
        }
        if (!tokens->isEmpty())
            takePlainText(tokens);
    }
}

void QFnFastParser::takePlainText(QList<QFnToken> *tokens)
{
    // The first token is text whatever it is: behind a mark an opening note is.
    const auto end = std::find_if(tokens->cbegin() + 1, tokens->cend(), [](const QFnToken &token) {
        return token.kind == QFnToken::OpenNote || isEmphasisMark(token);
    });
    const int count = int(std::distance(tokens->cbegin(), end));
    const int start = currentElement.text.size();
    takeTexts(tokens, count, &currentElement.text);
    if (state == InAction)
        expandTabs(start, &currentElement.text);
}

void QFnFastParser::takeNote(QList<QFnToken> *tokens)
{
    changeParserState(InNotes);
    tokens->removeFirst();
    const auto close = std::find_if(tokens->cbegin(), tokens->cend(), [](const QFnToken &token) {
        return token.kind == QFnToken::CloseNote;
    });
    const bool closed = close != tokens->cend();
    takeTexts(tokens, int(std::distance(tokens->cbegin(), close)), &currentElement.text);
    if (closed)
        tokens->removeFirst();
    changeParserState(Idle);
}

void QFnFastParser::parseNotes(QList<QFnToken> *tokens)
{
    parseText(tokens, nullptr, Qt::AlignLeft);
}

void QFnFastParser::parseSynopsis(QList<QFnToken> *tokens)
{
    parseStyledLine(tokens, InSynopsis);
}

void QFnFastParser::parseGeneralLine(QList<QFnToken> *tokens)
{
    parseStyledLine(tokens, InGeneral);
}

void QFnFastParser::parseTransitionLine(QList<QFnToken> *tokens)
{
    parseStyledLine(tokens, InTransition);
}

void QFnFastParser::parseStyledLine(QList<QFnToken> *tokens, ParserState lineState)
{
    changeParserState(lineState);
    parseText(tokens, nullptr, Qt::AlignLeft);
    changeParserState(Idle);
}

void QFnFastParser::parseActionLine(QList<QFnToken> *tokens, bool centered)
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
    parseText(tokens, nullptr, alignment);
}

void QFnFastParser::parseDialogueLine(QList<QFnToken> *tokens)
{
    if (state != InDialogue)
        changeParserState(InDialogue);
    while (!tokens->isEmpty()) {
        if (takeTextUntil('(', tokens, &currentElement.text))
            takeParenthetical(tokens);
    }
    closeStretch();
}

void QFnFastParser::takeParenthetical(QList<QFnToken> *tokens)
{
    changeParserState(InParenthetical);
    takeTextUntil(')', tokens, &currentElement.text);
    appendCurrentElement();
    changeParserState(InDialogue);
}

void QFnFastParser::parseCharacter(QList<QFnToken> *tokens)
{
    changeParserState(InCharacter);
    for (QFnToken &token : *tokens) {
        if (token.text == continued)
            token.text = token.text.toLower();
    }
    takeTexts(tokens, tokens->size(), &currentElement.text);
    currentElement.text = currentElement.text.trimmed();
    // Even without text: the line of one blank that a cue can be has a speech below it.
    appendCurrentElement();
    changeParserState(InDialogue);
}

void QFnFastParser::parseSceneHeading(QList<QFnToken> *tokens)
{
    changeParserState(InSceneHeading);
    if (!tokens->isEmpty()) {
        skipWhitespaces(tokens);
        QString sceneNumber;
        while (!tokens->isEmpty()) {
            if (takeTextUntil('#', tokens, &currentElement.text))
                takeTextUntil('#', tokens, &sceneNumber);
        }
        currentElement.sceneNumber = sceneNumber;
    }
    appendCurrentElement();
    changeParserState(Idle);
}

void QFnFastParser::parseSectionHeading(QList<QFnToken> *tokens)
{
    changeParserState(InSectionHeading);
    int depth = 0;
    while (!tokens->isEmpty() && isMark(tokens->first(), '#')) {
        tokens->removeFirst();
        ++depth;
    }
    // Stays for the next element if there is no text: only storing an element clears it.
    currentElement.sectionDepth = depth;
    skipWhitespaces(tokens);
    takeTexts(tokens, tokens->size(), &currentElement.text);
    changeParserState(Idle);
}
