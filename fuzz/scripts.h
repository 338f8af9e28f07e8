// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef FUZZ_SCRIPTS_H
#define FUZZ_SCRIPTS_H

#include "host/richtext.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QStringList>
#include <QtGui/QTextDocument>

#include <iterator>

/// The lines of which scripts are made: each kind, and what comes in the way of each.
constexpr const char16_t *madeLines[] = {u"",
                                         u"",
                                         u"",
                                         u"",
                                         u" ",
                                         u"  ",
                                         u"\t",
                                         u"She sits.",
                                         u"*Calm*, she _waits_.",
                                         u"5 * 3",
                                         u"Queen_98",
                                         u"***All*** of **it *in* one**",
                                         u"_a *b_ c*",
                                         u"* *",
                                         u"****",
                                         u"**",
                                         u"a\tb",
                                         u"  Set in.",
                                         u"Ends with blanks.  ",
                                         u"INT. SEA - DAY",
                                         u"EXT. SEA #2 - DAY #12A#",
                                         u"INT. SEA  #4-A#",
                                         u"int. sea",
                                         u"INT.",
                                         u".HILL",
                                         u"..x",
                                         u"...",
                                         u"..",
                                         u". x",
                                         u"I/E CAR",
                                         u"INT. SEA [[number]] #4#",
                                         u"INT. SEA /* x */",
                                         u"/* x */INT. SEA",
                                         u"ANNA",
                                         u"ANNA (V.O.)",
                                         u"ANNA ^",
                                         u"@McAnna",
                                         u"BORIS  ",
                                         u"R2D2",
                                         u"(softly)",
                                         u"(a) b (c)",
                                         u"( )",
                                         u"()",
                                         u"I *mean* it.",
                                         u"Yes (no) yes",
                                         u"CUT TO:",
                                         u"> FADE OUT.",
                                         u">",
                                         u"> ",
                                         u">x",
                                         u"THE END",
                                         u"> centred <",
                                         u">*tight*<",
                                         u">  <",
                                         u"><",
                                         u"> a [[b]] <",
                                         u"# Act",
                                         u"## Scene  ",
                                         u"#",
                                         u"#x",
                                         u"###",
                                         u"# ",
                                         u"= synopsis",
                                         u"=x",
                                         u"=",
                                         u"==",
                                         u"===",
                                         u"=====",
                                         u"=== ",
                                         u"=== x",
                                         u"===/* x */",
                                         u"[[note]]",
                                         u"[[]]",
                                         u"[[ a",
                                         u"b ]]",
                                         u"[[*n*]]",
                                         u"[[a]][[b]]",
                                         u" [[x]]",
                                         u"She sits [[check]]. Then up.",
                                         u"/* comment */",
                                         u"/**/",
                                         u"/*",
                                         u"*/",
                                         u"x /* a",
                                         u"b */ y",
                                         u"/* a */ b /* c */",
                                         u"*a /* b */ c*",
                                         u"*a [[b*]] c*",
                                         u"Title: The Sea",
                                         u"Author:",
                                         u"AUTHOR",
                                         u"Notes about the sea",
                                         u"Title fights are rigged.",
                                         u"Draft date: _1_",
                                         u"    a value",
                                         u"Contact:\tme",
                                         u"!LOUD",
                                         u"!",
                                         u"! ",
                                         u"!#",
                                         u"~a song",
                                         u"\\*a\\*",
                                         u"&amp;",
                                         u"<b>a</b>",
                                         u"a  b",
                                         u"\u00a0",
                                         u"\u00a0a \u00a0 b",
                                         u"\u00e9\u00df\u0130",
                                         u"\u4e2d\u6587",
                                         u"\U0001f600 x",
                                         u"\u200b",
                                         u"\u2026",
                                         u"\u001fa",
                                         u"\ufeff",
                                         u"\uffff",
                                         u"\"q\" 'q'"};

inline QString madeLine(QRandomGenerator *random)
{
    return QString::fromUtf16(madeLines[random->bounded(int(std::size(madeLines)))]);
}

/// A script of lines from the table, or of letters from them, always the same for one \a seed.
inline QString madeScript(quint32 seed)
{
    QRandomGenerator random(seed);
    QStringList lines;
    const int count = random.bounded(1, 16);
    for (int i = 0; i < count; ++i) {
        QString line = madeLine(&random);
        const int change = random.bounded(12);
        if (change == 0)
            line += madeLine(&random);
        if (change == 1)
            line.insert(random.bounded(int(line.size()) + 1), QStringLiteral("/* x */"));
        if (change == 2)
            line.insert(random.bounded(int(line.size()) + 1), QStringLiteral("[[n]]"));
        if (change == 3)
            line.chop(1);
        lines.append(QString::fromUtf8(line.toUtf8())); // no half of a letter
        if (random.bounded(3) == 0)
            lines.append(QString());
    }
    return lines.join(u'\n') + (random.bounded(4) == 0 ? QString() : QStringLiteral("\n"));
}

/// \a script as it comes back from rich text that was saved as HTML.
inline QString comeBack(const QString &script)
{
    QTextDocument imported;
    Host::importScript(script, &imported);
    QTextDocument loaded;
    loaded.setHtml(imported.toHtml());
    return Host::exportScript(loaded);
}

/// The shortest part of \a script that does not come back either, without needless lines.
inline QString shrunk(QString script)
{
    QStringList lines = script.split(u'\n');
    for (int i = 0; i < lines.size();) {
        QStringList fewer = lines;
        fewer.removeAt(i);
        const QString text = fewer.join(u'\n');
        if (comeBack(text) == text) {
            ++i;
            continue;
        }
        lines = fewer;
        script = text;
    }
    return script;
}

#endif
