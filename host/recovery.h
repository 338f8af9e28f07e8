// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_RECOVERY_H
#define HOST_RECOVERY_H

#include <QtCore/QDateTime>
#include <QtCore/QLockFile>
#include <QtCore/QThreadPool>

namespace Host {

/// The copy of the unsaved text of one window, in a file of its own among the user's data.
///
/// A lock tells whether the window still lives. It falls when the program ends in whatever way.
class Recovery
{
public:
    /// What a window that did not come to its end has left.
    struct Copy
    {
        QString path; ///< of the script, empty for one that was never saved
        QString text;
        QDateTime time; ///< when the copy was made
    };

    Recovery();

    /// Writes \a text of the script at \a path over the copy before. Does not wait for the disk.
    void put(const QString &path, const QString &text);

    /// Whether the last copy could not be written. Waits for it.
    bool hasFailed();

    /// Takes the copy away.
    void remove();

    /// The files of copies whose windows are gone.
    static QStringList leftBehind();

    /// Reads one of leftBehind(). False if it is gone or spoilt.
    static bool read(const QString &file, Copy *copy);

private:
    QString m_file;
    QLockFile m_lock;
    bool m_failed = false; ///< Read when no copy is being written.
    QThreadPool m_writer;  ///< One thread: a copy never overtakes a later one.
};

} // namespace Host

#endif
