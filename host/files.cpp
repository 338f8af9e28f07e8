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
#include <cstdio>
#include <iterator>

namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
constexpr QLatin1String lineEnds[] = {QLatin1String("\n"), QLatin1String("\r\n"),
                                      QLatin1String("\r")};

/// An encoding and the bytes at the start of a file that tell it, where 'x' is any but zero.
struct Encoding
{
    const char *name; ///< as iconv knows it
    const char *mark;
    int length;
};

// The longer mark first: that of UTF-16 is the start of the other.
constexpr Encoding encodings[] = {
    {"UTF-32", "\xFF\xFE\0\0", 4}, {"UTF-32", "\0\0\xFE\xFF", 4}, {"UTF-16", "\xFF\xFE", 2},
    {"UTF-16", "\xFE\xFF", 2},     {"UTF-16LE", "x\0x\0", 4},     {"UTF-16BE", "\0x\0x", 4},
};

/// The name of the encoding, other than UTF-8, that \a bytes show by their start, null if none.
const char *encodingOf(const QByteArray &bytes)
{
    const auto matches = [](char mark, char byte) {
        return mark == 'x' ? byte != 0 : mark == byte;
    };
    for (const Encoding &e : encodings) {
        if (bytes.size() >= e.length
            && std::equal(e.mark, e.mark + e.length, bytes.begin(), matches))
            return e.name;
    }
    return nullptr;
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

/// The command that makes the file at \a path UTF-8.
QString mending(const QString &path, const char *encoding)
{
    // What shows no mark comes from an older system, nearly always in this encoding.
    auto command = QStringLiteral("; mend it with: iconv -f %1 -t UTF-8")
                       .arg(QLatin1String(encoding ? encoding : "WINDOWS-1252"));
    if (path != Host::standardStream)
        command += QLatin1String(" '")
                   + QString(path).replace(QLatin1String("'"), QLatin1String("'\\''"))
                   + QLatin1Char('\'');
    return command;
}

bool openToRead(QFile *file, const QString &path)
{
    return path == Host::standardStream ? file->open(stdin, QIODevice::ReadOnly)
                                        : file->open(QIODevice::ReadOnly);
}

/// Goes on behind a short count, which has no reason yet: the next write has it.
bool writeAll(QFileDevice *file, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 count = file->write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

/// Writes to what is there already and can't be replaced: a device, a pipe, standard output.
bool writeThrough(QFile *file, const QString &path, const QByteArray &bytes)
{
    const QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    const bool open = path == Host::standardStream ? file->open(stdout, mode) : file->open(mode);
    return open && writeAll(file, bytes) && file->flush();
}

} // namespace

bool Host::fail(const QString &path, const QString &reason, QString *error)
{
    *error = QDir::toNativeSeparators(path) + QLatin1String(": ") + reason;
    return false;
}

bool Host::readText(const QString &path, QString *text, QString *error, TextForm *form)
{
    if (path != standardStream) {
        const QFileInfo info(path);
        if (!info.exists())
            return fail(path, QStringLiteral("no such file"), error);
        if (info.isDir())
            return fail(path, QStringLiteral("is a folder, not a file"), error);
    }
    QFile file(path);
    QByteArray bytes;
    if (openToRead(&file, path))
        bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(path, QStringLiteral("cannot be read: ") + file.errorString(), error);

    // With its size, since a byte array alone is read up to its first zero only. The decoder takes
    // off the mark in front.
    QString read = QString::fromUtf8(bytes.constData(), int(bytes.size()));
    TextForm found;
    found.byteOrderMark = bytes.startsWith(byteOrderMark);
    const int skipped = found.byteOrderMark ? int(sizeof byteOrderMark) - 1 : 0;
    const char *const encoding = encodingOf(bytes);
    const int bad = encoding ? 0 : firstBadByte(bytes.mid(skipped), read);
    if (bad >= 0) {
        const auto reason = QStringLiteral("is %1 at byte %2, counted from 0");
        const QString name = encoding ? QLatin1String(encoding) + QLatin1String(", not UTF-8,")
                                      : QStringLiteral("not UTF-8");
        return fail(path, reason.arg(name).arg(bad + skipped) + mending(path, encoding), error);
    }

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
    if (form.lineEnd != TextForm::Lf)
        text.replace(lineEnds[TextForm::Lf], lineEnds[form.lineEnd]);
    return (form.byteOrderMark ? QByteArray(byteOrderMark) : QByteArray()) + text.toUtf8();
}

bool Host::saveBytes(const QString &path, const QByteArray &bytes, QString *error)
{
    const auto unwritable = [&](const QFileDevice &file) {
        return fail(path, QStringLiteral("cannot be written: ") + file.errorString(), error);
    };
    const QFileInfo info(path);
    if (path != standardStream && info.isDir())
        return fail(path, QStringLiteral("is a folder, not a file"), error);
    if (path == standardStream || (info.exists() && !info.isFile())) {
        // A rename would put an ordinary file in the place of the device.
        QFile device(path);
        return writeThrough(&device, path, bytes) || unwritable(device);
    }
    // Unbuffered, because commit() does not see that the last of a buffer could not be written.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || !writeAll(&file, bytes))
        return unwritable(file);
    return file.commit() || unwritable(file);
}
