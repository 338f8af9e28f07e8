// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/files.h"

#include "host/quoting.h"
#include "model/literals_p.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <algorithm>
#include <cstdio>

namespace {

using Zem::operator""_L1;

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
constexpr QLatin1String lineEnds[] = {"\n"_L1, "\r\n"_L1,
                                      "\r"_L1}; // in the order of TextForm::LineEnd

/// An encoding in which most of each Latin letter, and of a mark in front, is zero.
struct WideEncoding
{
    const char *firstBytes; ///< 0 for a zero
    const char *name;
};

constexpr WideEncoding wideEncodings[] = {
    {"x0x0", "UTF-16LE"}, {"0x0x", "UTF-16BE"}, {"x000", "UTF-32LE"},
    {"000x", "UTF-32BE"}, {"xx00", "UTF-32"},   {"00xx", "UTF-32"},
};

/// The encoding, other than UTF-8, that the first bytes of a file show. Null if none.
const char *encodingOf(const QByteArray &bytes)
{
    QByteArray first = bytes.left(4);
    std::replace_if(
        first.begin(), first.end(), [](char c) { return c != 0; }, 'x');
    first.replace('\0', '0');
    for (const WideEncoding &encoding : wideEncodings) {
        if (first == encoding.firstBytes)
            return encoding.name;
    }
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF") ? "UTF-16" : nullptr;
}

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

/// What is wrong with a file that is not UTF-8 at \a byte, and the command that makes it so.
QString notUtf8(const QString &path, const char *encoding, int byte)
{
    const auto words = QStringLiteral("is %1not UTF-8 at byte %2, counted from 0; mend it with: "
                                      "iconv -f %3 -t UTF-8%4");
    // What shows no mark comes from an older system, nearly always in this encoding.
    const QString from = QLatin1String(encoding ? encoding : "WINDOWS-1252");
    return words.arg(encoding ? from + ", "_L1 : QString())
        .arg(byte)
        .arg(from, path == Host::standardStream ? QString() : u' ' + Host::quotedForShell(path));
}

/// Writes all of \a bytes. Goes on behind a short count, which has no reason yet: the next write
/// has it.
bool writeAll(QFileDevice *file, const QByteArray &bytes)
{
    qint64 count = 0;
    for (qint64 done = 0; done < bytes.size(); done += count) {
        count = file->write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0)
            return false;
    }
    return true;
}

} // namespace

bool Host::fail(const QString &path, const QString &reason, QString *error)
{
    *error = QDir::toNativeSeparators(path) + ": "_L1 + reason;
    return false;
}

bool Host::readText(const QString &path, QString *text, QString *error, TextForm *form)
{
    QFile file(path);
    const bool isStream = path == standardStream;
    if (!isStream && !file.exists())
        return fail(path, QStringLiteral("no such file"), error);
    if (!isStream && QFileInfo(path).isDir())
        return fail(path, QStringLiteral("is a folder, not a file"), error);
    QByteArray bytes;
    if (isStream ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(isStream ? QStringLiteral("standard input") : path,
                    QStringLiteral("cannot be read: ") + file.errorString(), error);

    // With its size, since a byte array alone is read up to its first zero only. The decoder takes
    // off the mark in front.
    QString read = QString::fromUtf8(bytes.constData(), int(bytes.size()));
    TextForm found;
    found.byteOrderMark = bytes.startsWith(byteOrderMark);
    const int skipped = found.byteOrderMark ? int(sizeof byteOrderMark) - 1 : 0;
    const char *const encoding = encodingOf(bytes);
    const int bad = encoding ? 0 : firstBadByte(bytes.mid(skipped), read);
    if (bad >= 0)
        return fail(path, notUtf8(path, encoding, bad + skipped), error);

    const auto end =
        std::find_if(read.cbegin(), read.cend(), [](QChar c) { return c == u'\n' || c == u'\r'; });
    if (end != read.cend() && *end == u'\r')
        found.lineEnd = end + 1 != read.cend() && end[1] == u'\n' ? TextForm::CrLf : TextForm::Cr;
    read.replace(lineEnds[TextForm::CrLf], lineEnds[TextForm::Lf]);
    *text = read.replace(lineEnds[TextForm::Cr], lineEnds[TextForm::Lf]);
    if (form)
        *form = found;
    return true;
}

QByteArray Host::toBytes(QString text, const TextForm &form)
{
    text.replace(lineEnds[TextForm::Lf], lineEnds[form.lineEnd]);
    return (form.byteOrderMark ? QByteArray(byteOrderMark) : QByteArray()) + text.toUtf8();
}

bool Host::saveBytes(const QString &path, const QByteArray &bytes, QString *error)
{
    const bool isStream = path == standardStream;
    const auto unwritable = [&](const QFileDevice &file) {
        return fail(isStream ? QStringLiteral("standard output") : path,
                    QStringLiteral("cannot be written: ") + file.errorString(), error);
    };
    // Unbuffered, because QSaveFile's commit() does not see that the last of a buffer was lost.
    const QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    const QFileInfo info(path);
    if (!isStream && info.isDir())
        return fail(path, QStringLiteral("is a folder, not a file"), error);
    if (isStream || (info.exists() && !info.isFile())) {
        // A rename would put an ordinary file in the place of the device.
        QFile device(path);
        const bool open = isStream ? device.open(stdout, mode) : device.open(mode);
        return (open && writeAll(&device, bytes) && device.flush()) || unwritable(device);
    }
    QSaveFile file(path);
    return (file.open(mode) && writeAll(&file, bytes) && file.commit()) || unwritable(file);
}
