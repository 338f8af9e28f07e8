// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/writing.h"

#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <algorithm>
#include <iterator>

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

/// The lines of a paragraph in its customary form, or with the mark of its kind if that is forced.
QString markedLines(const Paragraph &paragraph)
{
    QString text = markedText(paragraph.stretches);
    if (paragraph.centred)
        return "> "_L1 + text.replace("\n"_L1, " <\n> "_L1) + " <"_L1;
    const KindMarks *marks = marksOf(paragraph.type);
    QFnFastParser parser(nullptr);
    const bool areNeeded = marks
                           && (paragraph.forced || marks->always
                               || (paragraph.type != QFnElement::Action
                                   && kindOf(text, true, &parser) != paragraph.type));
    if (!areNeeded)
        return text;
    return QString(std::max(0, paragraph.depth - 1), u'#') + marks->open + text + marks->close;
}

} // namespace

const KindMarks *marksOf(QFnElement::Type type)
{
    const auto found = std::find_if(std::begin(kindMarks), std::end(kindMarks),
                                    [type](const KindMarks &marks) { return marks.type == type; });
    return found == std::end(kindMarks) ? nullptr : found;
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

QString written(const Paragraph &paragraph, const Paragraph *above)
{
    if (!paragraph.source.isEmpty())
        return paragraph.source;
    const bool isPart = paragraph.type == QFnElement::Dialogue
                        || paragraph.type == QFnElement::Parenthetical
                        || (paragraph.type == QFnElement::Action && isBlank(paragraph.text()));
    const bool isParted = above && !isPart && !(above->titlePage && paragraph.titlePage);
    return (isParted ? "\n"_L1 : ""_L1) + markedLines(paragraph) + u'\n';
}

QString written(QVector<Paragraph> *paragraphs)
{
    QString text;
    const Paragraph *above = nullptr;
    for (Paragraph &paragraph : *paragraphs) {
        text += written(paragraph, above);
        paragraph.end = int(text.size());
        above = &paragraph;
    }
    return text;
}

} // namespace Host
