// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/writing.h"

#include "host/marks.h"
#include "parser/qfnfastparser.h"

#include <algorithm>

namespace Host {
namespace {

/// The text with its marks of emphasis, which end with each line.
QString markedText(const QVector<Stretch> &stretches)
{
    QString text;
    QVector<const EmphasisMark *> open; // in the order of opening
    const auto setEmphasis = [&](int emphasis) {
        for (int i = int(open.size()) - 1; i >= 0; --i) {
            if (!(open.at(i)->emphasis & emphasis))
                text += open.takeAt(i)->text;
        }
        for (const EmphasisMark &mark : emphasisMarks) {
            if (mark.emphasis & emphasis && !open.contains(&mark)) {
                text += mark.text;
                open.append(&mark);
            }
        }
    };
    for (const Stretch &stretch : stretches) {
        for (const QChar c : stretch.text) {
            const bool endsLine = c == QChar::LineSeparator;
            setEmphasis(endsLine ? 0 : stretch.emphasis);
            text += endsLine ? QChar(u'\n') : c;
        }
    }
    setEmphasis(0);
    return text;
}

/// The lines of a paragraph in its customary form or with a mark that forces its kind.
QString markedLines(const Paragraph &paragraph, bool forced)
{
    QString text = markedText(paragraph.stretches);
    if (paragraph.centred)
        return "> "_L1 + text.replace("\n"_L1, " <\n> "_L1) + " <"_L1;
    if (paragraph.type == QFnElement::Notes)
        return noteOpen + text + noteClose;
    if (paragraph.type == QFnElement::Boneyard)
        return commentOpen + text + commentClose;
    if (!paragraph.sceneNumber.isEmpty())
        text += " #"_L1 + paragraph.sceneNumber + u'#';
    const KindMark *mark = kindMarkOf(paragraph.type);
    if (!mark)
        return text;
    QFnFastParser parser(nullptr);
    const bool isNeeded =
        forced || mark->always
        || (mark->type != QFnElement::Action && kindOf(text, true, &parser) != mark->type);
    if (!isNeeded)
        return text;
    return QString(std::max(1, paragraph.depth), mark->mark) + (mark->takesBlank ? " "_L1 : ""_L1)
           + text;
}

bool isBlankLine(const Paragraph &paragraph)
{
    return paragraph.type == QFnElement::Action && isBlank(paragraph.text());
}

/// Whether custom has a blank line between two paragraphs.
bool arePartedByBlank(const Paragraph &above, const Paragraph &below)
{
    const bool isSpeech =
        below.type == QFnElement::Dialogue || below.type == QFnElement::Parenthetical;
    return !isBlankLine(below) && !isSpeech && !(above.titlePage && below.titlePage);
}

} // namespace

QString written(const Paragraph &paragraph, const Paragraph *above, Form form)
{
    if (form == Form::Source && !paragraph.source.isEmpty())
        return paragraph.source;
    const bool parted = above && arePartedByBlank(*above, paragraph);
    return (parted ? "\n"_L1 : ""_L1) + markedLines(paragraph, form == Form::Forced) + u'\n';
}

QString written(const QVector<Paragraph> &paragraphs)
{
    QString text;
    const Paragraph *above = nullptr;
    for (const Paragraph &paragraph : paragraphs) {
        text += written(paragraph, above, Form::Source);
        above = &paragraph;
    }
    return text;
}

} // namespace Host
