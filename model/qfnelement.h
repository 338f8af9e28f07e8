// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNELEMENT_H
#define QFNELEMENT_H

#include "model/qfnstyle.h"
#include "model/zemfountain_export.h"

#include <QtCore/QString>

/// One element of a script: a heading, a cue, a line of dialogue, a stretch of action.
///
/// A plain record. It has one style for all its text, so a line with emphasis is several
/// consecutive elements of one type. Copying is cheap: both strings are implicitly shared.
class ZEMFOUNTAIN_EXPORT QFnElement
{
public:
    /// What an element is. The numbers are fixed.
    enum Type : int {
        Undefined = 0,      ///< Nothing told, as in an element that was just made.
        Action = 1,         ///< What is seen and heard, and every line that is nothing else.
        Boneyard = 2,       ///< A comment, cut out of the script but kept in place.
        Character = 3,      ///< A cue: who speaks.
        Notes = 4,          ///< A note to the writer.
        Dialogue = 5,       ///< A line of a speech.
        PageBreak = 6,      ///< The start of a new page.
        Parenthetical = 7,  ///< How a speech is spoken, without its parentheses.
        SceneHeading = 8,   ///< Where and when a scene is.
        SectionHeading = 9, ///< A heading of the outline, which is not printed.
        Synopsis = 10,      ///< A line of the outline, which is not printed.
        Transition = 11,    ///< How one scene goes over into the next.
        General = 12        ///< Text of a kind that only the application knows.
    };

    /// An Undefined element with no text, no scene number, depth 0 and the default style.
    QFnElement();

    /// Puts every field back to its value after construction.
    void clear();

    /// The name of \a type for people and for records of paragraph kinds, with a blank in
    /// "Scene Heading" and "Section Heading". Empty for a number outside the enumeration.
    static QString toString(QFnElement::Type type);

    /// The type called \a name, compared exactly, or Undefined when there is none.
    ///
    /// Not the reverse of toString() for two types: the names taken here are "SceneHeading" and
    /// "SectionHeading", and with a blank in them they give Undefined.
    static QFnElement::Type toElementType(const QString &name);

    QFnElement::Type type; ///< Undefined after construction.
    /// The text without the marks that introduced it. May hold line feeds (an Action element has
    /// one for each blank line inside it), and may be empty in a stored element too.
    QString text;
    /// Of a SectionHeading, the number of leading "#". 0 after construction. Look at it in a
    /// SectionHeading only: a line of marks without text leaves its depth to the element behind it.
    int sectionDepth;
    QString sceneNumber; ///< Of a SceneHeading, the text between its two "#"; else empty.
    QFnStyle style;      ///< The style of all of the text.
};

#endif
