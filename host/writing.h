// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_WRITING_H
#define HOST_WRITING_H

#include "host/reading.h"
#include "model/literals_p.h"

class QFnFastParser;

/// Paragraphs as the text of a script, the way back from reading, and the marks that both share.
namespace Host {

using Zem::operator""_L1;

constexpr QLatin1String noteOpen = "[["_L1;
constexpr QLatin1String noteClose = "]]"_L1;
constexpr QLatin1String commentOpen = "/*"_L1;
constexpr QLatin1String commentClose = "*/"_L1;

struct EmphasisMark
{
    QLatin1String text;
    Stretch::Emphasis emphasis;
};

/// The marks of emphasis, in the order of opening.
constexpr EmphasisMark emphasisMarks[] = {
    {"_"_L1, Stretch::Underline},
    {"*"_L1, Stretch::Italic},
    {"**"_L1, Stretch::Bold},
};

/// The mark in front of a paragraph that tells its kind.
struct KindMark
{
    QFnElement::Type type;
    QChar mark;
    bool repeats;    ///< Its number is the depth.
    bool takesBlank; ///< A blank behind it is not of the text.
    bool always;     ///< No text has the kind without the mark.
};

constexpr KindMark kindMarks[] = {
    {QFnElement::Action, u'!', false, false, false},
    {QFnElement::SceneHeading, u'.', false, false, false},
    {QFnElement::Transition, u'>', false, true, false},
    {QFnElement::SectionHeading, u'#', true, true, true},
    {QFnElement::Synopsis, u'=', false, true, true},
};

/// The mark of \a type, null if it has none.
const KindMark *kindMarkOf(QFnElement::Type type);

inline bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

/// Whether nothing but blanks is in \a text.
bool isBlank(QStringView text);

/// What the library takes a \a line for that opens a block, with a blank line or with text below
/// it. The \a parser is used for it.
QFnElement::Type kindOf(QString line, bool blankBelow, QFnFastParser *parser);

/// How a paragraph is written: as it stood in its source, if it has one; in the customary form; or
/// with a mark that forces its kind.
enum class Form { Source, Customary, Forced };

/// \a paragraph in \a form, with the line end behind it and the blank line that parts it from the
/// paragraph \a above, which is null for the first one.
QString written(const Paragraph &paragraph, const Paragraph *above, Form form);

/// The script with these paragraphs. Of what read() gave, that is the source.
QString written(const QVector<Paragraph> &paragraphs);

} // namespace Host

#endif
