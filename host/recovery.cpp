// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/recovery.h"

#include "host/files.h"

#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>
#include <QtCore/QUuid>

namespace {

QDir folder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir folder(data + QLatin1String("/unsaved"));
    folder.mkpath(QStringLiteral("."));
    return folder;
}

QString lockOf(const QString &file)
{
    return file + QLatin1String(".lock");
}

} // namespace

Host::Recovery::Recovery()
    : m_file(folder().filePath(QUuid::createUuid().toString(QUuid::Id128) + QLatin1String(".copy")))
    , m_lock(lockOf(m_file))
{
    m_lock.tryLock(0);
    m_writer.setMaxThreadCount(1);
}

void Host::Recovery::put(const QString &path, const QString &text)
{
    m_writer.start([this, path, text] {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream.setVersion(QDataStream::Qt_5_15);
        stream << path << QDateTime::currentDateTime() << text;
        QString error;
        m_failed = !saveBytes(m_file, bytes, &error);
    });
}

bool Host::Recovery::hasFailed()
{
    m_writer.waitForDone();
    return m_failed;
}

void Host::Recovery::remove()
{
    m_writer.waitForDone();
    QFile::remove(m_file);
}

QStringList Host::Recovery::leftBehind()
{
    QStringList files;
    const auto all = folder().entryInfoList({QStringLiteral("*.copy")}, QDir::Files, QDir::Time);
    for (const QFileInfo &info : all) {
        QLockFile lock(lockOf(info.filePath()));
        lock.setStaleLockTime(0); // However old, it holds as long as its program runs.
        if (lock.tryLock(0))
            files.append(info.filePath());
    }
    return files;
}

bool Host::Recovery::read(const QString &file, Copy *copy)
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    QDataStream stream(&in);
    stream.setVersion(QDataStream::Qt_5_15);
    stream >> copy->path >> copy->time >> copy->text;
    return stream.status() == QDataStream::Ok;
}
