// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef FUZZ_SCRIPTS_H
#define FUZZ_SCRIPTS_H

#include "host/records.h"
#include "host/richtext.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QStringList>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <iterator>

/// The lines of which scripts are made: each kind, and what comes in the way of each.
// clang-format off
constexpr const char16_t *madeLines[] = {
    u"", u"", u"", u"", u" ", u"  ", u"\t", u"She sits.", u"*Calm*, she _waits_.", u"5 * 3",
    u"Queen_98", u"***All*** of **it *in* one**", u"_a *b_ c*", u"_*_*", u"* *", u"****", u"**",
    u"a\tb", u"  Set in.", u"Ends with blanks.  ", u"INT. SEA - DAY", u"EXT. SEA #2 - DAY #12A#",
    u"INT. SEA  #4-A#", u"int. sea", u"INT.", u".HILL", u"..x", u"...", u"..", u". x", u"I/E CAR",
    u"INT. SEA [[number]] #4#", u"INT. SEA /* x */", u"/* x */INT. SEA", u"ANNA", u"ANNA (V.O.)",
    u"ANNA ^", u"@McAnna", u"BORIS  ", u"R2D2", u"(softly)", u"(a) b (c)", u"( )", u"()",
    u"I *mean* it.", u"Yes (no) yes", u"CUT TO:", u"> FADE OUT.", u">", u"> ", u">x", u"THE END",
    u"> centred <", u">*tight*<", u">  <", u"><", u"> a [[b]] <", u"# Act", u"## Scene  ", u"#",
    u"#x", u"###", u"# ", u"= synopsis", u"=x", u"=", u"==", u"===", u"=====", u"=== ", u"=== x",
    u"===/* x */", u"[[note]]", u"[[]]", u"[[ a", u"b ]]", u"[[*n*]]", u"[[a]][[b]]", u" [[x]]",
    u"She sits [[check]]. Then up.", u"/* comment */", u"/**/", u"/*", u"*/", u"x /* a", u"b */ y",
    u"/* a */ b /* c */", u"*a /* b */ c*", u"*a [[b*]] c*", u"Title: The Sea", u"Author:",
    u"AUTHOR", u"Notes about the sea", u"Title fights are rigged.", u"Draft date: _1_",
    u"    a value", u"Contact:\tme", u"!LOUD", u"!", u"! ", u"!#", u"~a song", u"\\*a\\*", u"&amp;",
    u"<b>a</b>", u"a  b", u"\u00a0", u"\u00a0a \u00a0 b", u"\u00e9\u00df\u0130", u"\u4e2d\u6587",
    u"\U0001f600 x", u"\u200b", u"\u2026", u"\u001fa", u"\ufeff", u"\uffff", u"\"q\" 'q'",
};
// clang-format on

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

/// Fills \a document with a few paragraphs of any kind that no script was read for, always the same
/// for one \a seed.
inline void makeRichText(quint32 seed, QTextDocument *document)
{
    QRandomGenerator random(seed);
    QTextCursor cursor(document);
    const auto &kinds = Host::records();
    const int count = random.bounded(1, 5);
    for (int i = 0; i < count; ++i) {
        const auto &format = kinds.at(random.bounded(int(kinds.size()))).blockFormat;
        i == 0 ? cursor.setBlockFormat(format) : cursor.insertBlock(format, QTextCharFormat());
        cursor.insertText(madeLine(&random), QTextCharFormat());
        QTextCharFormat emphasised;
        emphasised.setFontItalic(random.bounded(3) == 0);
        if (random.bounded(4) == 0)
            cursor.insertText(madeLine(&random), emphasised);
    }
}

/// A line for each block: its kind, and each letter with its emphasis.
inline QString shownBlocks(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString kind = Host::recordOf(block).name;
        const bool isCentred = block.blockFormat().alignment() == Qt::AlignHCenter;
        QString line;
        if (block.length() > 1)
            line = kind + QLatin1String(isCentred ? ": centred " : ": ");
        else if (kind == QLatin1String("PageBreak"))
            line = QStringLiteral("PageBreak: ===");
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            for (const QChar c : it.fragment().text()) {
                line += c;
                line += QLatin1String(format.fontWeight() >= QFont::Bold ? "b" : "");
                line += QLatin1String(format.fontItalic() ? "i" : "");
                line += QLatin1String(format.fontUnderline() ? "u" : "");
            }
        }
        lines.append(line);
    }
    return lines.join(u'\n');
}

/// What the rich text of \a seed reads back as from its script, where that is something else and
/// no message tells it. Null if all is well; \a isTold says whether there was a message.
inline QString silentChange(quint32 seed, bool *isTold)
{
    QTextDocument made, again;
    makeRichText(seed, &made);
    QStringList messages;
    const QString script = Host::exportScript(made, &messages);
    Host::importScript(script, &again);
    *isTold = !messages.isEmpty();
    if (*isTold || shownBlocks(again) == shownBlocks(made))
        return QString();
    return QStringLiteral("%1\nwritten as \"%2\" reads back as\n%3")
        .arg(shownBlocks(made), script, shownBlocks(again));
}

#endif
