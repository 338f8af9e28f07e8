// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_LISTING_H
#define HOST_LISTING_H

class QString;

namespace Host {

/// What the library's parser makes of \a script: a line for each entry of the title page and each
/// element, with its kind, its text in quotes and what is set in it beside these.
QString listing(const QString &script);

} // namespace Host

#endif
