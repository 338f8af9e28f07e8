// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "bridge/ZemFountain.h"
#include "host/files.h"
#include "host/listing.h"
#include "host/options.h"
#include "host/records.h"
#include "host/richtext.h"
#include "host/window.h"
#include "model/qfndocument.h"
#include "writer/qfnwriter.h"

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtCore/QLoggingCategory>
#include <QtGui/QTextDocument>
#include <QtWidgets/QApplication>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

using Host::Options;

enum ExitCode : int { Success = 0, Failure = 1, WrongUse = 2 };

/// One line on standard error. UTF-8, so that the name of a file is shown whole in any locale.
ExitCode report(const QString &message, ExitCode code)
{
    std::fprintf(stderr, "zemscript: %s\n", message.toUtf8().constData());
    return code;
}

ExitCode save(const QString &path, const QByteArray &bytes)
{
    QString error;
    return Host::saveBytes(path, bytes, &error) ? Success : report(error, Failure);
}

/// One line about a file whose ending is none of \a known.
ExitCode reportEnding(const QString &path, const QString &known)
{
    const auto words = QStringLiteral("%1: unknown ending; known: %2");
    const bool isStream = path == Host::standardStream;
    return report(words.arg(path, known) + QLatin1String(isStream ? ", told by --to" : ""),
                  isStream ? WrongUse : Failure);
}

ExitCode importFile(const Options &options)
{
    const QString script = options.paths.first();
    const QString out = options.paths.value(1, Host::standardStream);
    const Host::Format *const format =
        options.to ? options.to : Host::formatOf(QFileInfo(out).suffix());
    if (!format)
        return reportEnding(out, Host::formatNames());
    if (options.plain && format->isPages)
        return report(format->name + QLatin1String(": pages are not made by --plain"), WrongUse);

    QString text;
    QString problem;
    if (!Host::readText(script, &text, &problem))
        return report(problem, Failure);
    const QString name = QFileInfo(script).completeBaseName();
    const QByteArray bytes = format->make({text, name, options.plain, options.paper}, &problem);
    if (!problem.isEmpty())
        report(problem, Failure);
    return !problem.isEmpty() && bytes.isEmpty() ? Failure : save(out, bytes);
}

/// What ZemFountain::writeFile() writes, in memory: only so is it whole in the file or not at all.
QByteArray plainScript(const QTextDocument &document)
{
    QFnDocument model(nullptr);
    ZemFountain::toFountainDocument(document, Host::records(), &model, nullptr);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QFnWriter(&buffer).write(&model);
    return buffer.data();
}

ExitCode exportFile(const Options &options)
{
    const QString richText = options.paths.first();
    const QString ending = QFileInfo(richText).suffix();
    if (richText != Host::standardStream
        && ending.compare(QLatin1String("html"), Qt::CaseInsensitive) != 0)
        return reportEnding(richText, QStringLiteral("html"));
    const QString out = options.paths.value(1, Host::standardStream);
    QString html;
    QString error;
    if (!Host::readText(richText, &html, &error))
        return report(error, Failure);
    if (options.plain) {
        QTextDocument document;
        document.setHtml(html);
        return save(out, plainScript(document));
    }
    QStringList messages;
    const QByteArray script = Host::exportHtml(html, &messages).toUtf8();
    for (const QString &message : qAsConst(messages))
        report(message, Success);
    return save(out, script);
}

ExitCode listElements(const Options &options)
{
    QString text;
    QString error;
    if (!Host::readText(options.paths.first(), &text, &error))
        return report(error, Failure);
    return save(Host::standardStream, Host::listing(text).toUtf8());
}

/// Qt ends with a core dump where it finds no display.
[[noreturn]] void endWithoutDisplay()
{
    std::_Exit(report(QStringLiteral("edit: there is no usable display"), Failure));
}

ExitCode edit(const Options &options, int argc, char **argv)
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &) {
        if (type == QtFatalMsg)
            endWithoutDisplay();
    });
    QApplication application(argc, argv);
    // These run without a display, and nobody would see the window.
    if (QStringList{QStringLiteral("offscreen"), QStringLiteral("minimal")}.contains(
            QGuiApplication::platformName()))
        endWithoutDisplay();
    auto window = std::make_unique<Host::Window>();
    QString error;
    if (!options.paths.isEmpty() && !window->open(options.paths.first(), &error))
        return report(error, Failure);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window.release()->show();
    return QApplication::exec() == 0 ? Success : Failure;
}

ExitCode run(const Options &options)
{
    switch (options.command) {
    case Options::Import:
        return importFile(options);
    case Options::Export:
        return exportFile(options);
    case Options::Elements:
        return listElements(options);
    default:
        return save(Host::standardStream, options.answer.toUtf8());
    }
}

} // namespace

int main(int argc, char *argv[])
{
    // What Qt has to say about its surroundings would hide the one line that counts.
    QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN); // A file that grows too large is a write that fails.
#endif
    QCoreApplication::setApplicationName(QStringLiteral("zemscript"));
    Options options;
    {
        const QCoreApplication application(argc, argv);
        QString error;
        if (!Host::parse(QCoreApplication::arguments(), &options, &error))
            return report(error, WrongUse);
    }
    if (options.command == Options::Edit)
        return edit(options, argc, argv);
    // Rich text and pages need a platform of windows, though no display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qunsetenv("QT_QPA_GENERIC_PLUGINS");
    int count = 1;
    const QGuiApplication application(count, argv);
    return run(options);
}
