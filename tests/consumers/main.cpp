// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include <bridge/ZemFountain.h>

#include <QGuiApplication>
#include <QTextDocument>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);

    ZEMScriptElement cue; // a kind of paragraph, known again by its format
    cue.name = "Character";
    cue.blockFormat.setLeftMargin(200);
    QList<ZEMScriptElement> kinds{cue};

    QTextDocument script;
    ZemFountain::parseText("The lamp is lit.\n\nMARA\nIt burns.\n", &script, &kinds, nullptr);

    QString error;
    if (!ZemFountain::writeFile("script.fountain", script, kinds, &error))
        qFatal("script.fountain: %s", qPrintable(error));
}
