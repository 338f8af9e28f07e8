// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/files.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QString>

#include <algorithm>

namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

/// The index of the first byte at which \a bytes, read as \a text, is not UTF-8, or -1.
///
/// Qt's decoder puts U+FFFD where it meets a fault and says nothing of the place. What is encoded
/// again differs from the bytes in that character for the first time, perhaps behind its start.
int firstBadByte(const QByteArray &bytes, const QString &text)
{
    const QByteArray again = text.toUtf8();
    if (again == bytes)
        return -1;
    const auto difference = std::mismatch(bytes.begin(), bytes.end(), again.begin(), again.end());
    int index = int(difference.second - again.begin());
    while (index > 0 && index < again.size() && (uchar(again.at(index)) & 0xC0) == 0x80)
        --index;
    return index;
}

} // namespace

bool Host::fail(const QString &path, const QString &reason, QString *error)
{
    *error = QDir::toNativeSeparators(path) + QLatin1String(": ") + reason;
    return false;
}

bool Host::readText(const QString &path, QString *text, QString *error)
{
    const QFileInfo info(path);
    if (!info.exists())
        return fail(path, QStringLiteral("no such file"), error);
    if (info.isDir())
        return fail(path, QStringLiteral("is a folder, not a file"), error);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(path, QStringLiteral("cannot be read: ") + file.errorString(), error);
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(path, QStringLiteral("cannot be read: ") + file.errorString(), error);

    const int skipped = bytes.startsWith(byteOrderMark) ? int(sizeof byteOrderMark) - 1 : 0;
    bytes.remove(0, skipped);
    // With its size, since a byte array alone is read up to its first zero only.
    QString read = QString::fromUtf8(bytes.constData(), bytes.size());
    const int bad = firstBadByte(bytes, read);
    if (bad >= 0) {
        const auto reason = QStringLiteral("is not UTF-8 at byte %1, counted from 0");
        return fail(path, reason.arg(bad + skipped), error);
    }
    *text = read.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return true;
}

bool Host::saveBytes(const QString &path, const QByteArray &bytes, QString *error)
{
    const auto unwritable = [&](const QFileDevice &file) {
        return fail(path, QStringLiteral("cannot be written: ") + file.errorString(), error);
    };
    const QFileInfo info(path);
    if (info.isDir())
        return fail(path, QStringLiteral("is a folder, not a file"), error);
    if (info.exists() && !info.isFile()) {
        // A rename would put an ordinary file in the place of the device.
        QFile device(path);
        if (!device.open(QIODevice::WriteOnly) || device.write(bytes) != bytes.size()
            || !device.flush())
            return unwritable(device);
        return true;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return unwritable(file);
    file.write(bytes);
    return file.commit() || unwritable(file);
}
