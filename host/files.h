// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_FILES_H
#define HOST_FILES_H

#include <QtCore/QLatin1String>

class QByteArray;
class QString;

/// Files in and out. Each failure leaves one line in \a error that names the file and what is
/// wrong with it. The path "-" is standard input or standard output.
namespace Host {

constexpr QLatin1String standardStream("-", 1);

/// What of a text file is not its text. A file that is saved again keeps it.
struct TextForm
{
    enum LineEnd { Lf, CrLf, Cr };

    LineEnd lineEnd = Lf;       ///< That of the first line. A file of one line has Lf.
    bool byteOrderMark = false; ///< Whether the UTF-8 mark stands in front.
};

/// Reads the file at \a path into \a text: strictly UTF-8, a byte order mark in front taken off,
/// each CR LF and each lone CR turned into LF. \a form, if not null, is told how the file was. On
/// failure both are as they were, and the line for what is not UTF-8 has the command that mends it.
bool readText(const QString &path, QString *text, QString *error, TextForm *form = nullptr);

/// The bytes of a file in \a form whose text, with LF at the end of a line, is \a text.
QByteArray toBytes(QString text, const TextForm &form);

/// Puts \a bytes into the file at \a path, whole or not at all: on failure an older file is as it
/// was. What is no ordinary file, a device or a pipe, is written to where it stands.
bool saveBytes(const QString &path, const QByteArray &bytes, QString *error);

/// One line for \a error: the file and what is wrong with it. Gives false, for use in a return.
bool fail(const QString &path, const QString &reason, QString *error);

} // namespace Host

#endif
