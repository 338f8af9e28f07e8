// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/exporting.h"
#include "host/files.h"
#include "host/importing.h"
#include "host/pdf.h"
#include "host/titlepage.h"
#include "host/window.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QBuffer>
#include <QtCore/QCommandLineParser>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLoggingCategory>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentWriter>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>

namespace {

enum ExitCode : int { Success = 0, Failure = 1, WrongUse = 2 };

QString ending(const QString &path)
{
    return QFileInfo(path).suffix().toLower();
}

/// The bytes of \a document in a format that Qt's writer knows by name.
QByteArray written(QTextDocument *document, const char *format)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextDocumentWriter(&buffer, format).write(document);
    return buffer.data();
}

/// The ODF writer names a face for each text, its own where the text has none.
QByteArray toOdt(QTextDocument *document)
{
    QTextCharFormat face;
    face.setFontFamilies({QStringLiteral("Courier New")});
    face.setFontPointSize(document->defaultFont().pointSizeF());
    QTextCursor all(document);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(face);
    return written(document, "ODF");
}

struct Output
{
    QLatin1String ending;
    QByteArray (*make)(QTextDocument *document);
};

const Output outputs[] = {
    {QLatin1String("html"), [](QTextDocument *document) { return written(document, "HTML"); }},
    {QLatin1String("odt"), toOdt},
    {QLatin1String("txt"), [](QTextDocument *document) { return written(document, "plaintext"); }},
    {QLatin1String("pdf"), [](QTextDocument *document) { return Host::toPdf(*document); }},
};

bool importFile(const QStringList &paths, QString *error)
{
    const auto output = std::find_if(std::begin(outputs), std::end(outputs), [&](const Output &o) {
        return o.ending == ending(paths.at(1));
    });
    if (output == std::end(outputs))
        return Host::fail(paths.at(1),
                          QStringLiteral("unknown ending; .html, .odt, .pdf and .txt are known"),
                          error);
    QString text;
    if (!Host::readText(paths.at(0), &text, error))
        return false;
    QTextDocument document;
    Host::importScript(text, &document);
    return Host::saveBytes(paths.at(1), output->make(&document), error);
}

bool exportFile(const QStringList &paths, QString *error)
{
    if (ending(paths.at(0)) != QLatin1String("html"))
        return Host::fail(paths.at(0), QStringLiteral("unknown ending; .html is known"), error);
    QString html;
    if (!Host::readText(paths.at(0), &html, error))
        return false;
    QTextDocument document;
    document.setHtml(html);
    return Host::saveBytes(paths.at(1), Host::exportScript(document), error);
}

/// \a text in quotes and on one line.
QString quoted(QString text)
{
    text.replace(QLatin1String("\\"), QLatin1String("\\\\"));
    text.replace(QLatin1String("\n"), QLatin1String("\\n"));
    text.replace(QLatin1String("\r"), QLatin1String("\\r"));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// What is set in an element beside its type and text.
QString details(const QFnElement &element)
{
    QString text;
    if (element.style.bold)
        text += QLatin1String(" bold");
    if (element.style.italic)
        text += QLatin1String(" italic");
    if (element.style.underline)
        text += QLatin1String(" underline");
    if (element.style.alignment & Qt::AlignHCenter)
        text += QLatin1String(" centred");
    if (element.sectionDepth > 0)
        text += QStringLiteral(" depth %1").arg(element.sectionDepth);
    if (!element.sceneNumber.isEmpty())
        text += QLatin1String(" number ") + quoted(element.sceneNumber);
    return text;
}

bool printElements(const QStringList &paths, QString *error)
{
    QString text;
    if (!Host::readText(paths.at(0), &text, error))
        return false;
    QFnFastParser parser(nullptr);
    parser.parse(text);
    QString listing;
    const auto addLine = [&listing](const QString &kind, const QString &rest) {
        listing += kind.leftJustified(16) + rest + QLatin1Char('\n');
    };
    for (const auto &entry : Host::titleEntries(parser.document->titlePage))
        addLine(QStringLiteral("Title Page"),
                quoted(entry.first) + QLatin1String(": ") + quoted(entry.second));
    for (const QFnElement *element : parser.document->elements)
        addLine(QFnElement::toString(element->type), quoted(element->text) + details(*element));
    QFile out;
    const bool written =
        out.open(stdout, QIODevice::WriteOnly) && out.write(listing.toUtf8()) >= 0 && out.flush();
    return written || Host::fail(QStringLiteral("standard output"), out.errorString(), error);
}

bool edit(const QStringList &paths, QString *error)
{
    Host::Window window;
    if (!paths.isEmpty() && !window.open(paths.at(0), error))
        return false;
    window.show();
    return QApplication::exec() == 0;
}

struct Command
{
    QLatin1String name;
    int least, most; ///< how many paths it takes
    bool (*run)(const QStringList &paths, QString *error);
};

constexpr char editName[] = "edit";

constexpr Command commands[] = {
    {QLatin1String("import"), 2, 2, importFile},
    {QLatin1String("export"), 2, 2, exportFile},
    {QLatin1String("elements"), 1, 1, printElements},
    {QLatin1String(editName), 0, 1, edit},
};

constexpr char description[] =
    "Fountain screenplays to rich text and back.\n\n"
    "  zemscript import SCRIPT.fountain OUT           OUT ends in .html, .odt, .pdf or .txt\n"
    "  zemscript export RICHTEXT.html OUT.fountain  rich text that import wrote\n"
    "  zemscript elements SCRIPT.fountain             what the parser makes of the script\n"
    "  zemscript edit [SCRIPT.fountain]               a window to write in";

/// Whether the platform of windows, X11 or Wayland where it is not part of the system, is there.
bool hasDisplay()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const char *const names[] = {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"};
    return std::any_of(std::begin(names), std::end(names),
                       [](const char *name) { return !qEnvironmentVariableIsEmpty(name); });
#else
    return true;
#endif
}

int report(const QString &message, ExitCode code)
{
    // In UTF-8, so that the name of a file is shown whole in any locale.
    std::fprintf(stderr, "zemscript: %s\n", message.toUtf8().constData());
    return code;
}

} // namespace

int main(int argc, char *argv[])
{
    // What Qt has to say about its surroundings would hide the one line that counts.
    QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
    // The kind of application has to be known before it reads the command line. Only one command
    // needs a display, and its help does not.
    const bool edits = argc > 1 && qstrcmp(argv[1], editName) == 0;
    const bool displayMissing = edits && !hasDisplay();
    if ((!edits || displayMissing) && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::unique_ptr<QGuiApplication> application(edits ? new QApplication(argc, argv)
                                                             : new QGuiApplication(argc, argv));
    QCoreApplication::setApplicationName(QStringLiteral("zemscript"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZEMSCRIPT_VERSION));

    QCommandLineParser line;
    line.setApplicationDescription(QString::fromLatin1(description));
    const QCommandLineOption help = line.addHelpOption();
    const QCommandLineOption version = line.addVersionOption();
    line.addPositionalArgument(QStringLiteral("command"),
                               QStringLiteral("import, export, elements or edit"));
    line.addPositionalArgument(QStringLiteral("files"), QStringLiteral("as above"),
                               QStringLiteral("files..."));
    // Not process(), which leaves with 1 for wrong use.
    if (!line.parse(QCoreApplication::arguments()))
        return report(line.errorText(), WrongUse);
    if (line.isSet(help))
        line.showHelp(Success);
    if (line.isSet(version))
        line.showVersion();

    QStringList paths = line.positionalArguments();
    if (paths.isEmpty())
        return report(QStringLiteral("no command given; see zemscript --help"), WrongUse);
    const QString name = paths.takeFirst();
    const auto command = std::find_if(std::begin(commands), std::end(commands),
                                      [&name](const Command &c) { return c.name == name; });
    if (command == std::end(commands))
        return report(name + QLatin1String(": no such command; see zemscript --help"), WrongUse);
    if (paths.size() < command->least || paths.size() > command->most) {
        const auto wrong = QStringLiteral("%1: takes %2 file names, not %3; see zemscript --help");
        const QString most = QString::number(command->most);
        const bool fixed = command->least == command->most;
        const QString taken = fixed ? most : QStringLiteral("at most ") + most;
        return report(wrong.arg(name, taken).arg(paths.size()), WrongUse);
    }
    if (command->run == edit && displayMissing)
        return report(name + QLatin1String(": there is no display"), Failure);
    QString error;
    return command->run(paths, &error) ? Success : report(error, Failure);
}
