// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_WRITING_H
#define HOST_WRITING_H

#include "host/reading.h"
#include "model/literals_p.h"

#include <algorithm>

class QFnFastParser;

/// What reading shares with writing: the marks of a script, and a single paragraph as its text.
namespace Host {

using Zem::operator""_L1;

/// What stands around the text of a paragraph and tells its kind.
struct KindMarks
{
    QFnElement::Type type;
    bool always; ///< No text has the kind without the marks.
    /// With the blank behind it that custom has, which is not of the text. In front of a section
    /// the first letter stands as often as the section is deep.
    QLatin1String open;
    QLatin1String close;
};

constexpr KindMarks noteMarks = {QFnElement::Notes, true, "[["_L1, "]]"_L1};
constexpr KindMarks commentMarks = {QFnElement::Boneyard, true, "/*"_L1, "*/"_L1};
constexpr KindMarks kindMarks[] = {
    {QFnElement::Action, false, "!"_L1, ""_L1},
    {QFnElement::SceneHeading, false, "."_L1, ""_L1},
    {QFnElement::Transition, false, "> "_L1, ""_L1},
    {QFnElement::SectionHeading, true, "# "_L1, ""_L1},
    {QFnElement::Synopsis, true, "= "_L1, ""_L1},
    noteMarks,
    commentMarks,
};

struct EmphasisMark
{
    QLatin1String text;
    Stretch::Emphasis emphasis;
};

/// In the order of opening.
constexpr EmphasisMark emphasisMarks[] = {
    {"_"_L1, Stretch::Underline},
    {"*"_L1, Stretch::Italic},
    {"**"_L1, Stretch::Bold},
};

/// The marks of \a type, null if it has none.
const KindMarks *marksOf(QFnElement::Type type);

inline bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

/// Whether nothing but blanks is in \a text.
inline bool isBlank(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return isBlank(c); });
}

/// What the library takes a \a line for that opens a block, with a blank line or with text below
/// it. The \a parser is used for it.
QFnElement::Type kindOf(QString line, bool blankBelow, QFnFastParser *parser);

/// \a paragraph with the line end behind it and the blank line that parts it from the one \a above,
/// which is null for the first one.
QString written(const Paragraph &paragraph, const Paragraph *above);

} // namespace Host

#endif
