// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/writing.h"

#include "model/qfndocument.h"
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

/// Whether custom has a blank line between two paragraphs.
bool arePartedByBlank(const Paragraph &above, const Paragraph &below)
{
    const bool isBlankLine = below.type == QFnElement::Action && isBlank(below.text());
    const bool isSpeech =
        below.type == QFnElement::Dialogue || below.type == QFnElement::Parenthetical;
    return !isBlankLine && !isSpeech && !(above.titlePage && below.titlePage);
}

} // namespace

const KindMark *kindMarkOf(QFnElement::Type type)
{
    const auto found = std::find_if(std::begin(kindMarks), std::end(kindMarks),
                                    [type](const KindMark &mark) { return mark.type == type; });
    return found == std::end(kindMarks) ? nullptr : found;
}

bool isBlank(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return isBlank(c); });
}

QFnElement::Type kindOf(QString line, bool blankBelow, QFnFastParser *parser)
{
    // The library takes the key of a title page for one in any line.
    parser->buffer = line;
    parser->initParser();
    if (QFnFastParser::isTitlePageKey(parser->nextToken().text.toUpper()))
        line[0] = line.at(0).isUpper() ? u'X' : u'x';
    // And no keyword with a full stop in it: INT./EXT. is INT/EXT.
    const int stop = int(line.indexOf("./"_L1));
    if (stop > 0)
        line.remove(stop, 1);
    parser->parse(line + (blankBelow ? "\n\n"_L1 : "\nx\n"_L1));
    return parser->document->elements.first()->type;
}

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
