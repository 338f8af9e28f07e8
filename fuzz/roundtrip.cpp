// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// roundtrip COUNT SEED FILES...: sends COUNT made scripts and the files to rich text and back, then
// COUNT made pieces of rich text to a script and back, and prints what does not come back. The exit
// code is 1 if anything does not.

#include "fuzz/scripts.h"

#include <QtCore/QFile>
#include <QtGui/QGuiApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const quint32 count = arguments.value(1).toUInt();
    const quint32 seed = arguments.value(2).toUInt();
    int failures = 0;
    const auto check = [&](const QString &name, const QString &script) {
        if (comeBack(script) == script)
            return;
        ++failures;
        const QString least = shrunk(script);
        std::printf("%s: \"%s\"\ncomes back as \"%s\"\n", qPrintable(name), qPrintable(least),
                    qPrintable(comeBack(least)));
    };
    for (quint32 i = 0; i < count; ++i)
        check(QStringLiteral("script %1").arg(seed + i), madeScript(seed + i));
    for (const QString &path : arguments.mid(3)) {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            check(path, QString::fromUtf8(file.readAll())
                            .replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
        } else {
            ++failures;
            std::printf("%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
        }
    }
    for (quint32 i = 0; i < count; ++i) {
        bool isTold = false;
        const QString change = silentChange(seed + i, &isTold);
        failures += change.isNull() ? 0 : 1;
        if (!change.isNull())
            std::printf("rich text %u: %s\n", seed + i, qPrintable(change));
    }
    std::printf("%d of %lld came back otherwise\n", failures,
                static_cast<long long>(2 * count + arguments.mid(3).size()));
    return failures == 0 ? 0 : 1;
}
