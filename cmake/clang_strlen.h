// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// Read in front of each source when Clang compiles it. A constexpr QLatin1String of Qt 5.15
// measures its text by strlen(), which GCC takes for a constant and Clang does not.
#include <cstring>
#define strlen __builtin_strlen
