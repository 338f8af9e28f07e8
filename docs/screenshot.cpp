// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// screenshot SCRIPT.fountain OUT.png [dark]: a picture of the editing window with the script.

#include "host/scripteditor.h"
#include "host/window.h"

#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>

namespace {

QPalette darkPalette()
{
    const QColor ground(0x2b, 0x2d, 0x30), paper(0x1e, 0x1f, 0x22), text(0xdd, 0xdd, 0xdd);
    QPalette palette(text, ground, ground.lighter(), ground.darker(), ground, text, paper);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x6a, 0xa6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    // What this user has of settings and copies is not for the picture.
    const QTemporaryDir folder;
    QStandardPaths::setTestModeEnabled(true);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));
    if (arguments.contains(QLatin1String("dark")))
        QApplication::setPalette(darkPalette());
    Host::Window window;
    QString error;
    if (!window.open(arguments.value(1), &error)) {
        QTextStream(stderr) << error << '\n';
        return 1;
    }
    window.show();
    auto *scenes = window.findChild<QListView *>();
    while (scenes->model()->rowCount() == 0)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents(); // the pages, which follow the scenes
    // The second scene at the top and the cursor in its first cue.
    Q_EMIT scenes->clicked(scenes->model()->index(1, 0));
    auto *editor = window.findChild<Host::ScriptEditor *>();
    editor->find(QStringLiteral("All keepers"));
    QTextCursor cursor = editor->textCursor();
    cursor.setPosition(cursor.selectionEnd() + 1);
    editor->setTextCursor(cursor);
    QApplication::processEvents();
    return window.grab().save(arguments.value(2)) ? 0 : 1;
}
