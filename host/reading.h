// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_READING_H
#define HOST_READING_H

#include "model/qfnelement.h"

#include <QtCore/QString>
#include <QtCore/QVector>

/// The host's one reading of a script, and the way back. The library tells what kind of paragraph a
/// line is; around that the reading keeps what the library drops or joins: lines, keywords,
/// comments and marks that do not pair up.
namespace Host {

/// A piece of a paragraph with one look.
struct Stretch
{
    enum Emphasis : int { Underline = 1, Italic = 2, Bold = 4 };

    QString text;     ///< A piece of the source, with QChar::LineSeparator for the line ends in it.
    int emphasis = 0; ///< Flags of Emphasis.
    /// Notes or Boneyard: of a note or comment. Undefined: text. Working material within a line has
    /// its marks, and so does the number of a scene, which counts as a note.
    QFnElement::Type working = QFnElement::Undefined;
    int start = -1; ///< Index of its first UTF-16 unit in the source, -1 where there is no source.

    /// Whether both are the same, wherever they stand.
    bool operator==(const Stretch &other) const
    {
        return text == other.text && emphasis == other.emphasis && working == other.working;
    }
};

constexpr int deepestSection = 1000; ///< Further marks in a script are kept in the source.

/// One paragraph of a script: a heading, a cue, a line of a speech, some lines of action.
struct Paragraph
{
    QFnElement::Type type = QFnElement::Action; ///< A blank line is Action without text.
    bool titlePage = false; ///< An entry of the title page: key, colon and value. Of type General.
    bool centred = false;   ///< Only action is.
    bool forced = false;    ///< Written with the mark of its kind where custom has none.
    int start = 0;          ///< Index in the source of the first UTF-16 unit of its first line.
    int end = 0;            ///< Index behind the last unit of its last line, the line end included.
    QVector<Stretch> stretches; ///< The text, without the marks that tell kind and emphasis.
    QString sceneNumber;        ///< Of a heading, without its marks. Else empty.
    int depth = 0;              ///< Of a section, from 1 to deepestSection. Else 0.
    /// How it stands in the source, with the line end behind it and the blank line above it. Empty
    /// where writing gives the same without it.
    QString source;

    QString text() const; ///< The texts of the stretches, with notes, comments and the number.
};

/// The paragraphs of \a source, whose lines end in LF. No text fails.
QVector<Paragraph> read(const QString &source);

/// The script with these \a paragraphs, whose end is set to where they end in it. Of what read()
/// gave, that is the source.
QString written(QVector<Paragraph> *paragraphs);

/// Whether paragraphs of \a type have emphasis. In others its marks are text.
bool hasEmphasis(QFnElement::Type type);

} // namespace Host

#endif
