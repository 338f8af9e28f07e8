// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/options.h"

#include "host/pdf.h"
#include "model/literals_p.h"

#include <QtCore/QCommandLineParser>

#include <algorithm>
#include <iterator>

namespace {

using Zem::operator""_L1;

struct CommandRow
{
    Host::Options::Command command;
    QLatin1String name, files, text;
    int least, most;       ///< how many names of files it takes
    QLatin1String options; ///< beside --help
};

constexpr CommandRow commands[] = {
    {Host::Options::Import, "import"_L1, "SCRIPT [OUT]"_L1,
     "Takes a script to rich text or pages."_L1, 1, 2, "to paper plain"_L1},
    {Host::Options::Export, "export"_L1, "RICHTEXT [OUT]"_L1,
     "Takes .html as import writes it back to a script."_L1, 1, 2, "plain"_L1},
    {Host::Options::Elements, "elements"_L1, "SCRIPT"_L1,
     "Lists what the library's parser makes of a script."_L1, 1, 1, QLatin1String()},
    {Host::Options::Edit, "edit"_L1, "[SCRIPT]"_L1, "Opens a window to write in."_L1, 0, 1,
     QLatin1String()},
    {Host::Options::Tell, "help"_L1, "[COMMAND]"_L1, "Tells how a command is used."_L1, 0, 1,
     QLatin1String()},
};

const CommandRow *commandOf(const QString &name)
{
    const auto row = std::find_if(std::begin(commands), std::end(commands),
                                  [&name](const CommandRow &c) { return c.name == name; });
    return row == std::end(commands) ? nullptr : row;
}

/// Teaches \a line the options of \a row, or all if that is null, and the words for its help.
void prepare(QCommandLineParser *line, const CommandRow *row)
{
    const QCommandLineOption options[] = {
        {QStringLiteral("to"), Host::formatNames() + ", whatever the ending of OUT."_L1,
         QStringLiteral("format")},
        {QStringLiteral("paper"), QStringLiteral("letter or a4; as in your country if not told."),
         QStringLiteral("paper")},
        {QStringLiteral("plain"), QStringLiteral("What the library makes by itself; no pages.")},
    };
    for (const QCommandLineOption &option : options) {
        if (!row || QString(row->options).contains(option.names().first()))
            line->addOption(option);
    }
    line->addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("This text.")});
    line->addVersionOption();
    QString list = QStringLiteral("Fountain screenplays to rich text and pages, and back.\n\n");
    for (const CommandRow &c : commands) {
        const QString use = c.name + " "_L1 + c.files;
        list += "  "_L1 + use.leftJustified(22) + c.text + u'\n';
        if (row == &c)
            line->addPositionalArgument(c.name, c.text, use);
    }
    if (row)
        return;
    list += "\n- is standard input or output; an OUT left out is standard output."_L1;
    line->setApplicationDescription(list);
    line->addPositionalArgument(QStringLiteral("command"), QStringLiteral("As above."),
                                QStringLiteral("COMMAND FILES"));
}

bool refuse(const QString &words, QString *error)
{
    *error = words + "; see zemscript help"_L1;
    return false;
}

/// Takes the values of the options in \a line over into \a options. False if one is unknown.
bool takeValues(const QCommandLineParser &line, Host::Options *options, QString *error)
{
    const QStringList set = line.optionNames();
    options->plain = set.contains("plain"_L1);
    options->paper = Host::customaryPaper();
    if (set.contains("to"_L1)) {
        const QString name = line.value(QStringLiteral("to"));
        options->to = Host::formatOf(name);
        if (!options->to)
            return refuse(name + ": unknown format; known: "_L1 + Host::formatNames(), error);
    }
    if (set.contains("paper"_L1)) {
        const QString name = line.value(QStringLiteral("paper"));
        options->paper = name == "a4"_L1 ? QPageSize::A4 : QPageSize::Letter;
        if (options->paper == QPageSize::Letter && name != "letter"_L1)
            return refuse(name + ": unknown paper; known: letter, a4"_L1, error);
    }
    return true;
}

} // namespace

bool Host::parse(const QStringList &arguments, Options *options, QString *error)
{
    QCommandLineParser any;
    prepare(&any, nullptr);
    if (!any.parse(arguments))
        return refuse(any.errorText().remove(u'.'), error);
    if (any.isSet(QStringLiteral("version"))) {
        options->answer = QStringLiteral("zemscript " ZEMSCRIPT_VERSION "\n");
        return true;
    }
    QStringList words = any.positionalArguments();
    const bool help = any.isSet(QStringLiteral("help")) || words.value(0) == "help"_L1;
    if (words.value(0) == "help"_L1)
        words.removeFirst();
    const CommandRow *const row = commandOf(words.value(0));
    if (!row && !(help && words.isEmpty()))
        return refuse(words.isEmpty() ? QStringLiteral("no command given")
                                      : words.first() + ": no such command"_L1,
                      error);
    // By itself, a command knows its own options only.
    QCommandLineParser own;
    prepare(&own, row);
    if (help) {
        options->answer = own.helpText();
        return true;
    }
    if (!own.parse(arguments))
        return refuse(row->name + ": "_L1 + own.errorText().remove(u'.'), error);
    options->command = row->command;
    options->paths = words.mid(1);
    if (options->paths.size() < row->least || options->paths.size() > row->most)
        return refuse(row->name + ": takes "_L1 + row->files, error);
    return takeValues(own, options, error);
}
