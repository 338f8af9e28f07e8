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

/// \a text as one word of a command for the shell.
inline QString quotedForShell(QString text)
{
    return u'\'' + text.replace(QLatin1String("'"), QLatin1String("'\\''")) + u'\'';
}

} // namespace Host

#endif
