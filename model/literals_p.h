// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef LITERALS_P_H
#define LITERALS_P_H

#include <QtCore/QString>

namespace Zem {

#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
using Qt::Literals::StringLiterals::operator""_L1;
#else
/// A Latin-1 string of a known length. QLatin1String(const char *) would measure it at run time.
constexpr QLatin1String operator""_L1(const char *text, size_t size) noexcept
{
    return QLatin1String(text, int(size));
}
#endif

} // namespace Zem

#endif
