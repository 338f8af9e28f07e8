// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "bridge/ZemFountain.h"
#include "parser/qfnfastparser.h"

#include "dump.h"
#include "formats.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QTextDocument>

namespace {

/// A record for each type, told by its margin, under the names that both roads look for.
QList<ZEMScriptElement> records()
{
    QList<ZEMScriptElement> list;
    for (int type = QFnElement::Action; type <= QFnElement::General; ++type) {
        const QString name = QFnElement::toString(QFnElement::Type(type));
        for (const QString &sought : {QString(name).remove(u' '), name}) {
            list += recordOf(u"x m"_s + QString::number(type));
            list.last().name = sought;
        }
    }
    return list;
}

QString parsed(const QString &text)
{
    QFnFastParser parser(nullptr);
    parser.parse(text);
    return dump(*parser.document);
}

/// What the road there and back makes of a script: the blocks of the import, the text that the
/// export writes, and what that reads back as.
QString thereAndBack(const QString &script)
{
    QTextDocument document;
    QList<ZEMScriptElement> list = records();
    ZemFountain::parseText(script, &document, &list, nullptr);

    const QTemporaryDir dir;
    QFile file(dir.filePath(u"back.fountain"_s));
    ZemFountain::writeFile(file.fileName(), document, list, nullptr);
    file.open(QIODevice::ReadOnly);
    const QString written = QString::fromUtf8(file.readAll());
    return escaped(document.toPlainText()) + u'\n' + escaped(written) + u'\n' + parsed(written);
}

// A row for each line of the table "What survives the road back" in the README.
// clang-format off
const Row rows[] = {
    {"title page", u"Title: A Lamp\n\nx y\n", u"Title:A Lamp\\n\\nx y\n\\nTitle:A Lamp\\n\\nx y\n@Title|A Lamp\nAction||x y"},
    {"action", u"He runs.\n\nShe stays.\n", u"He runs.\\nShe stays.\n\\nHe runs.\\nShe stays.\nAction||He runs.She stays."},
    {"emphasis", u"a **b** c\n", u"a \\nb\\n c\n\\na \\nb\\n c\nAction||a b c"},
    {"centred", u"> the end <\n", u"the end\n\\nthe end\nAction||the end"},
    {"scene heading", u"INT. SEA #4#\n\nx y\n", u"SEA \\nx y\n\\n.SEA \\nx y\nCharacter||.SEA\nDialogue||x y\nDialogue||"},
    {"forced heading", u".SEA\n\nx y\n", u"SEA\\nx y\n\\n.SEA\\nx y\nCharacter||.SEA\nDialogue||x y\nDialogue||"},
    {"character and dialogue", u"Waves.\n\nMARA\nIt burns.\n\nx y\n",
     u"Waves.\\nMARA\\nIt burns.\\nx y\n\\nWaves.\\nMARAIt burns.\\nx y\nAction||Waves.MARAIt burns.x y"},
    {"parenthetical", u"MARA\n(softly)\nIt burns.\n", u"MARA\\n(softly)\\nIt burns.\\n\n\\nMARA(softly)It burns.\\n\nAction||MARA(softly)It burns."},
    {"transition", u"CUT TO:\n\nx y\n", u"CUT TO:\\nx y\n>CUT TO:\\nx y\nCharacter||>CUT TO:\nDialogue||x y\nDialogue||"},
    {"section", u"## Act One\n\nx y\n", u"Act One\\nx y\n#Act One\\nx y\nAction||#Act Onex y"},
    {"synopsis", u"= She leaves.\n\nx y\n", u" She leaves.\\nx y\n= She leaves.\\nx y\nAction||= She leaves.x y"},
    {"note", u"x y [[why?]] z\n", u"x y \\nwhy?\\n z\n\\nx y [[why?]]\\n z\nAction||x y \nNotes||why?\nAction|| z"},
    {"comment", u"x y\n\n/* old */\nz w\n", u"x y\\n old \\n\\nz w\n\\nx y\\n old \\n\\nz w\nAction||x y old \\nz w"},
    {"page break", u"x y\n===\nz w\n", u"x y\\n===\\nz w\n\\nx y\\n===\\nz w\nAction||x y\nPageBreak||===\nAction||z w"},
};
// clang-format on

} // namespace

class RoadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void road_data() { addRows(rows); }
    void road() { check(thereAndBack); }
};

QTEST_GUILESS_MAIN(RoadsTest)
#include "tst_roads.moc"
