// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "parser/qfntokens_p.h"

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
void takeTextUntil(char mark, QList<QFnToken> *tokens, QString *text)
{
    while (!tokens->isEmpty()) {
        const QFnToken token = tokens->takeFirst();
        if (isMark(token, mark))
            return;
        *text += token.text;
    }
}

void trimSpaces(QList<QFnToken> *tokens)
{
    while (!tokens->isEmpty() && tokens->first().kind == QFnToken::Space)
        tokens->removeFirst();
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

    if (alignment.testFlag(Qt::AlignHCenter) && state == InAction)
        trimSpaces(tokens);

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
            if (!currentElement.text.isEmpty())
                appendCurrentElement();
            startStretch();
        }
        // Behind a mark this may be an opening note, which is plain text there.
        if (!tokens->isEmpty())
            appendText(tokens->takeFirst().text);
    }
}

void QFnFastParser::appendText(QString text)
{
    if (state == InAction)
        text.replace(QLatin1Char('\t'), tabInAction);
    currentElement.text += text;
}

void QFnFastParser::takeNote(QList<QFnToken> *tokens)
{
    changeParserState(InNotes);
    tokens->removeFirst();
    while (!tokens->isEmpty()) {
        const QFnToken token = tokens->takeFirst();
        if (token.kind == QFnToken::CloseNote)
            break;
        currentElement.text += token.text;
    }
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
        if (!currentElement.text.isEmpty())
            appendCurrentElement();
        currentElement.type = QFnElement::Action;
        currentElement.style = QFnStyle();
        currentElement.style.alignment = alignment;
    }
    parseText(tokens, nullptr, alignment);
}

void QFnFastParser::parseDialogueLine(QList<QFnToken> *tokens)
{
    if (state != InDialogue)
        changeParserState(InDialogue);
    while (!tokens->isEmpty()) {
        const QFnToken token = tokens->takeFirst();
        if (isMark(token, '('))
            takeParenthetical(tokens);
        else
            currentElement.text += token.text;
    }
    closeStretch();
}

void QFnFastParser::takeParenthetical(QList<QFnToken> *tokens)
{
    if (!currentElement.text.isEmpty())
        appendCurrentElement();
    changeParserState(InParenthetical);
    takeTextUntil(')', tokens, &currentElement.text);
    appendCurrentElement();
    changeParserState(InDialogue);
}

void QFnFastParser::parseCharacter(QList<QFnToken> *tokens)
{
    changeParserState(InCharacter);
    while (!tokens->isEmpty()) {
        const QString text = tokens->takeFirst().text;
        currentElement.text += text == continued ? text.toLower() : text;
    }
    currentElement.text = currentElement.text.trimmed();
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
            const QFnToken token = tokens->takeFirst();
            if (isMark(token, '#'))
                takeTextUntil('#', tokens, &sceneNumber);
            else
                currentElement.text += token.text;
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
    currentElement.sectionDepth = depth;
    skipWhitespaces(tokens);
    currentElement.text += joinedText(*tokens, tokens->size());
    removeAll(tokens);
    changeParserState(Idle);
}
