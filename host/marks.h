// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_MARKS_H
#define HOST_MARKS_H

#include "host/reading.h"
#include "model/literals_p.h"

class QFnFastParser;

/// The marks of a script, and how a line is looked at apart from its notes and comments. Reading
/// and writing share them.
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

// These stand for each letter of a note and of a comment while a script is read. Qt takes them for
// marks of its own, so no script that goes through rich text has them.
constexpr QChar noteMask = u'\uFDD0';
constexpr QChar commentMask = u'\uFDD1';

inline bool isMask(QChar c)
{
    return c == noteMask || c == commentMask;
}

inline bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

/// Whether nothing but blanks is in \a text.
bool isBlank(QStringView text);

/// The \a source with masks in the place of its notes and comments, marks and line ends included. A
/// note that is open at a blank line is none; a comment without an end takes the rest of the
/// script, as in the library.
QString masked(const QString &source);

/// A masked \a line without its notes and comments: no blank stands behind one at its front, and
/// one blank where two would meet around them.
QString visible(QStringView line);

/// What the library takes a \a line for that opens a block, with a blank line or with text below
/// it. The \a parser is used for it.
QFnElement::Type kindOf(QString line, bool blankBelow, QFnFastParser *parser);

} // namespace Host

#endif
