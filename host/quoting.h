// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_QUOTING_H
#define HOST_QUOTING_H

#include <QtCore/QString>

namespace Host {

/// \a text in quotes and on one line.
inline QString quoted(QString text)
{
    text.replace(QLatin1String("\\"), QLatin1String("\\\\"));
    text.replace(QLatin1String("\n"), QLatin1String("\\n"));
    text.replace(QLatin1String("\r"), QLatin1String("\\r"));
    return u'"' + text + u'"';
}

/// The name of a file as one word of a command for the shell, and no option of it.
inline QString quotedForShell(QString text)
{
    return QLatin1String(text.startsWith(u'-') ? "./" : "") + u'\''
           + text.replace(QLatin1String("'"), QLatin1String("'\\''")) + u'\'';
}

} // namespace Host

#endif
