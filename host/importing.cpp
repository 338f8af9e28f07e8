// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/importing.h"

#include "bridge/ZemFountain.h"
#include "host/records.h"
#include "host/titlepage.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QPair>
#include <QtCore/QStringList>
#include <QtCore/QVector>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

namespace {

const QLatin1String commentOpen("/*");
const QLatin1String commentClose("*/");

/// Whether a comment is open behind \a line, if one was open in front of it or not.
bool leavesCommentOpen(const QString &line, bool open)
{
    int at = 0;
    while ((at = line.indexOf(open ? commentClose : commentOpen, at)) >= 0) {
        open = !open;
        at += 2;
    }
    return open;
}

/// Whether the parser takes \a line, alone between blank lines, for a scene heading by its keyword.
bool opensWithSceneKeyword(const QString &line, QFnFastParser *parser)
{
    // Every keyword starts with one of these. To cut each line of a script into tokens takes time.
    if (line.isEmpty() || !QStringLiteral("EIei").contains(line.at(0))
        || line.contains(commentOpen))
        return false;
    parser->buffer = line;
    parser->initParser();
    QList<QFnToken> tokens;
    while (parser->nextToken().kind != QFnToken::EndOfInput)
        tokens.append(parser->currentToken);
    return QFnFastParser::isSceneHeadingLine(&tokens);
}

/// The text as it goes into the library, changed in two places where what comes out would lack
/// something that a script needs.
///
/// A scene heading is forced by a ".": the parser takes off a keyword, "INT.", but not what stands
/// behind the dot, and the writer knows the keyword and leaves the dot out again. And each blank
/// line is doubled. An action element loses one line feed at its end, so that one blank line before
/// a styled stretch would leave no trace and the stretch look like a part of the line above.
QString prepared(const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    QFnFastParser parser(nullptr);
    QString result;
    result.reserve(text.size() + text.size() / 8);
    bool inComment = false;
    for (int i = 0; i < lines.size(); ++i) {
        const QString &line = lines.at(i);
        if (i > 0)
            result += QLatin1Char('\n');
        const bool endsText = i + 1 == lines.size();
        if (line.isEmpty() && !endsText && !inComment)
            result += QLatin1Char('\n');
        const bool alone = (i == 0 || lines.at(i - 1).isEmpty()) && i + 2 < lines.size()
                           && lines.at(i + 1).isEmpty();
        if (alone && !inComment && opensWithSceneKeyword(line, &parser))
            result += QLatin1Char('.');
        result += line;
        inComment = leavesCommentOpen(line, inComment);
    }
    return result;
}

/// Replaces the title text of the library, all entries in one run, by a line for each.
void layOutTitlePage(const QFnDocument::TitlePage &titlePage, QTextDocument *document)
{
    QTextCursor cursor(document);
    if (titlePage.isEmpty())
        return;
    QStringList lines;
    QString run;
    for (const auto &entry : Host::titleEntries(titlePage)) {
        lines += entry.first + QLatin1String(": ") + entry.second.trimmed();
        run += entry.second;
    }
    // How many blocks the run takes depends on what counts as a line end, so it is tried.
    QTextDocument trial;
    QTextCursor(&trial).insertText(run);
    cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, trial.blockCount());
    cursor.removeSelectedText();

    const QString name = Host::titlePageName();
    cursor.setBlockFormat(ZEMScriptElement::find(Host::records(), name).blockFormat);
    cursor.insertText(lines.join(QLatin1Char('\n')));
    cursor.insertBlock(QTextBlockFormat());
}

bool isEmptyAction(const QTextBlock &block)
{
    return block.length() == 1 && Host::typeOf(block) == QFnElement::Action;
}

/// Joins \a block with the one below if that is a stretch of the same line of action.
bool joinBelow(const QTextBlock &block, const QTextBlock &below)
{
    if (Host::typeOf(block) != QFnElement::Action || Host::typeOf(below) != QFnElement::Action
        || block.blockFormat().alignment() != below.blockFormat().alignment())
        return false;
    QTextCursor cursor(below);
    cursor.deletePreviousChar();
    return true;
}

/// Undoes the doubling of blank lines, of which each left two empty blocks, or one at the end of an
/// element: then joins the stretches of each line. Between two paragraphs of action the margin
/// stands for a blank line; above a note, and behind a comment, an empty block tells it from one in
/// a line.
void tidyAction(QTextDocument *document)
{
    for (QTextBlock block = document->begin(); block.isValid();) {
        const QFnElement::Type type = Host::typeOf(block);
        QTextBlock below = block.next();
        if (block.length() == 1 || (type != QFnElement::Action && type != QFnElement::Boneyard)) {
            block = below;
            continue;
        }
        int empties = 0;
        for (; below.isValid() && isEmptyAction(below); below = below.next())
            ++empties;
        if (empties == 0) {
            const int number = block.blockNumber();
            const bool joined = below.isValid() && joinBelow(block, below);
            block = joined ? document->findBlockByNumber(number) : below;
            continue;
        }
        const bool noteBelow = below.isValid() && Host::typeOf(below) == QFnElement::Notes;
        const int kept = type == QFnElement::Action ? (empties - 1) / 2 + (noteBelow ? 1 : 0) : 1;
        QTextCursor cursor(block);
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, empties - kept);
        cursor.removeSelectedText();
        block = below;
    }
}

/// The library gives plain text the weight 0, which HTML, ODT and the fonts take at its word.
void mendWeights(QTextDocument *document)
{
    QTextCursor cursor(document);
    QVector<QPair<int, int>> bold;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.charFormat().fontWeight() >= QFont::Bold)
                bold.append({fragment.position(), fragment.position() + fragment.length()});
        }
    }
    QTextCharFormat weight;
    weight.setFontWeight(QFont::Normal);
    cursor.select(QTextCursor::Document);
    cursor.mergeCharFormat(weight);
    cursor.mergeBlockCharFormat(weight);
    weight.setFontWeight(QFont::Bold);
    for (const auto &range : qAsConst(bold)) {
        cursor.setPosition(range.first);
        cursor.setPosition(range.second, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(weight);
    }
}

} // namespace

void Host::importScript(const QString &text, QTextDocument *document)
{
    const QString source = prepared(text);
    // Only for the entries of the title page, which parseText() runs together.
    QFnFastParser parser(nullptr);
    parser.parse(source);
    QList<ZEMScriptElement> list = records();

    document->setDefaultFont(scriptFont());
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    ZemFountain::parseText(source, document, &list, nullptr);
    layOutTitlePage(parser.document->titlePage, document);
    tidyAction(document);
    mendWeights(document);
    cursor.endEditBlock();
}
