// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_FILES_H
#define HOST_FILES_H

class QByteArray;
class QString;

/// Files in and out. Each failure leaves one line in \a error that names the file and what is
/// wrong with it.
namespace Host {

/// Reads the file at \a path into \a text: strictly UTF-8, a byte order mark in front taken off,
/// each CR LF turned into LF. On failure \a text is as it was.
bool readText(const QString &path, QString *text, QString *error);

/// Puts \a bytes into the file at \a path, whole or not at all: on failure an older file is as it
/// was. What is no ordinary file, a device or a pipe, is written to where it stands.
bool saveBytes(const QString &path, const QByteArray &bytes, QString *error);

/// One line for \a error: the file and what is wrong with it. Gives false, for use in a return.
bool fail(const QString &path, const QString &reason, QString *error);

} // namespace Host

#endif
