// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_FORMATS_H
#define HOST_FORMATS_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QPageSize>

namespace Host {

/// A script on its way to a file.
struct Work
{
    QString text; ///< the script
    QString name; ///< stands for the title of a script that has none
    bool plain;   ///< The rich text is what the library makes by itself.
    QPageSize::PageSizeId paper;
};

/// A form in which a script is saved.
struct Format
{
    QLatin1String name; ///< also the ending of its files
    bool isPages;       ///< Made from the pages, not from rich text.
    /// The bytes of a file. \a problem gets one line if faces are missing; without a face to print
    /// with, there are no bytes.
    QByteArray (*make)(const Work &work, QString *problem);
};

/// The format called \a name, in any case of letters, or null.
const Format *formatOf(const QString &name);

/// The names of all formats as they stand in a sentence: "a, b, c".
QString formatNames();

} // namespace Host

#endif
