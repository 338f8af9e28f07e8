// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/marks.h"

#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <algorithm>

namespace Host {
namespace {

constexpr QChar endOfInput = u'\uFFFF'; // to the library, wherever it stands

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

QString masked(const QString &source)
{
    QString text = source;
    const int size = int(text.size());
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return isMask(c) || c == endOfInput; }, u'-');
    // What was found is kept, so that the search for each mark goes through the text once.
    const auto find = [&](QLatin1String mark, int from, int *found) {
        if (*found < from) {
            const int index = int(source.indexOf(mark, from));
            *found = index < 0 ? size : index;
        }
        return *found;
    };
    int notes = -1, noteEnds = -1, comments = -1, commentEnds = -1, blankLines = -1;
    for (int at = 0; at < size;) {
        const int note = find(noteOpen, at, &notes);
        const int comment = find(commentOpen, at, &comments);
        const bool isNote = note < comment;
        const int start = std::min(note, comment);
        at = std::min(size, start + 2);
        const int close =
            isNote ? find(noteClose, at, &noteEnds) : find(commentClose, at, &commentEnds);
        if (isNote && close >= find("\n\n"_L1, start, &blankLines))
            continue;
        at = std::min(size, close + 2);
        std::fill(text.begin() + start, text.begin() + at, isNote ? noteMask : commentMask);
    }
    return text;
}

QString visible(QStringView line)
{
    QString text;
    for (int i = 0; i < line.size(); ++i) {
        const bool isBesideBlank =
            i > 0 && isMask(line.at(i - 1)) && (text.isEmpty() || isBlank(text.back()));
        if (!isMask(line.at(i)) && !(isBesideBlank && isBlank(line.at(i))))
            text += line.at(i);
    }
    return text;
}

QFnElement::Type kindOf(QString line, bool blankBelow, QFnFastParser *parser)
{
    // The library takes the key of a title page for one in any line.
    parser->buffer = line;
    parser->initParser();
    if (QFnFastParser::isTitlePageKey(parser->nextToken().text.toUpper()))
        line[0] = line.at(0).isUpper() ? u'X' : u'x';
    parser->parse(line + (blankBelow ? "\n\n"_L1 : "\nx\n"_L1));
    return parser->document->elements.first()->type;
}

} // namespace Host
