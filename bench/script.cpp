// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "bench/script.h"

#include <QtCore/QFile>
#include <QtCore/QMap>

QString generatedScript(int length)
{
    const QMap<char, QString> pieces = {
        {'H', QStringLiteral("INT. LIGHTHOUSE - DAY\n")},
        {'a', QStringLiteral("She crosses to the window and listens, for a while, to the sea.\n")},
        {'b',
         QStringLiteral("The lamp turns. Nobody has told her what the light is for, or who pays "
                        "for the oil that it burns.\n")},
        {'s', QStringLiteral("MARTHA\nYou never asked me that before... did you?\n")},
        {'t', QStringLiteral("THE KEEPER\nNo.\n")},
        {'u',
         QStringLiteral("MARTHA (V.O.)\nThen ask me again when the boat is in, and not now.\n")},
        {'E', QStringLiteral("It is **not** what *he* said.\n")},
        {'N', QStringLiteral("[[Ask about this.]]\n")},
        {'T', QStringLiteral("CUT TO:\n")},
        {'.', QStringLiteral("\n")},
    };
    static const char page[] = "H.a.s.u.b.t.ab.s.a.u.s.E.H.s.a.t.ab.s.b.u.t.N."
                               "H.s.a.u.ab.t.a.s.E.H.u.ab.t.b.s.a.T.";
    QString script;
    script.reserve(length + 256);
    for (size_t i = 0; script.size() < length; ++i)
        script += pieces.value(page[i % (sizeof(page) - 1)]);
    return script;
}

QString readFile(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}
