// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// screenshot SCRIPT.fountain OUT.png: a picture of the editing window with the script.

#include "host/window.h"

#include <QtCore/QTextStream>
#include <QtGui/QTextCursor>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListView>
#include <QtWidgets/QTextEdit>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));
    Host::Window window;
    QString error;
    if (!window.open(arguments.value(1), &error)) {
        QTextStream(stderr) << error << '\n';
        return 1;
    }
    window.show();
    // The first scene at the top and the cursor in its first cue.
    auto *scenes = window.findChild<QListView *>();
    Q_EMIT scenes->clicked(scenes->model()->index(0, 0));
    auto *page = window.findChild<QTextEdit *>();
    const auto *box = window.findChild<QComboBox *>();
    while (box->currentText() != QLatin1String("Character") && !page->textCursor().atEnd())
        page->moveCursor(QTextCursor::NextBlock);
    QApplication::processEvents();
    return window.grab().save(arguments.value(2)) ? 0 : 1;
}
