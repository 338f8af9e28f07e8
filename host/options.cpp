// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/options.h"

#include "host/pdf.h"

#include <QtCore/QCommandLineParser>

#include <algorithm>
#include <iterator>

namespace {

struct CommandRow
{
    Host::Options::Command command;
    QLatin1String name, files, text;
    int least, most;       ///< how many names of files it takes
    QLatin1String options; ///< beside --help
};

constexpr CommandRow commands[] = {
    {Host::Options::Import, QLatin1String("import"), QLatin1String("SCRIPT [OUT]"),
     QLatin1String("Takes a script to rich text or pages."), 1, 2, QLatin1String("to paper plain")},
    {Host::Options::Export, QLatin1String("export"), QLatin1String("RICHTEXT [OUT]"),
     QLatin1String("Takes .html as import writes it back to a script."), 1, 2,
     QLatin1String("plain")},
    {Host::Options::Elements, QLatin1String("elements"), QLatin1String("SCRIPT"),
     QLatin1String("Lists what the library's parser makes of a script."), 1, 1, QLatin1String()},
    {Host::Options::Edit, QLatin1String("edit"), QLatin1String("[SCRIPT]"),
     QLatin1String("Opens a window to write in."), 0, 1, QLatin1String()},
    {Host::Options::Tell, QLatin1String("help"), QLatin1String("[COMMAND]"),
     QLatin1String("Tells how a command is used."), 0, 1, QLatin1String()},
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
        {QStringLiteral("to"),
         QStringLiteral("%1, whatever the ending of OUT.").arg(Host::formatNames()),
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
        const QString use = c.name + QLatin1String(" ") + c.files;
        list += QLatin1String("  ") + use.leftJustified(22) + c.text + u'\n';
        if (row == &c)
            line->addPositionalArgument(c.name, c.text, use);
    }
    if (row)
        return;
    list += QLatin1String("\n- is standard input or output; an OUT left out is standard output.");
    line->setApplicationDescription(list);
    line->addPositionalArgument(QStringLiteral("command"), QStringLiteral("As above."),
                                QStringLiteral("COMMAND FILES"));
}

bool refuse(const QString &words, QString *error)
{
    *error = words + QLatin1String("; see zemscript help");
    return false;
}

/// Takes the values of the options in \a line over into \a options. False if one is unknown.
bool takeValues(const QCommandLineParser &line, Host::Options *options, QString *error)
{
    const QStringList set = line.optionNames();
    options->plain = set.contains(QLatin1String("plain"));
    options->paper = Host::customaryPaper();
    if (set.contains(QLatin1String("to"))) {
        const QString name = line.value(QStringLiteral("to"));
        options->to = Host::formatOf(name);
        if (!options->to)
            return refuse(name + QLatin1String(": unknown format; known: ") + Host::formatNames(),
                          error);
    }
    if (set.contains(QLatin1String("paper"))) {
        const QString name = line.value(QStringLiteral("paper"));
        options->paper = name == QLatin1String("a4") ? QPageSize::A4 : QPageSize::Letter;
        if (options->paper == QPageSize::Letter && name != QLatin1String("letter"))
            return refuse(name + QLatin1String(": unknown paper; known: letter, a4"), error);
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
    const bool help = any.isSet(QStringLiteral("help")) || words.value(0) == QLatin1String("help");
    if (words.value(0) == QLatin1String("help"))
        words.removeFirst();
    const CommandRow *const row = commandOf(words.value(0));
    if (!row && !(help && words.isEmpty()))
        return refuse(words.isEmpty() ? QStringLiteral("no command given")
                                      : words.first() + QLatin1String(": no such command"),
                      error);
    // By itself, a command knows its own options only.
    QCommandLineParser own;
    prepare(&own, row);
    if (help) {
        options->answer = own.helpText();
        return true;
    }
    if (!own.parse(arguments))
        return refuse(row->name + QLatin1String(": ") + own.errorText().remove(u'.'), error);
    options->command = row->command;
    options->paths = words.mid(1);
    if (options->paths.size() < row->least || options->paths.size() > row->most)
        return refuse(row->name + QLatin1String(": takes ") + row->files, error);
    return takeValues(own, options, error);
}
