// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef SCRIPT_H
#define SCRIPT_H

#include <QtCore/QString>

/// A script of at least \a length characters, in the proportions of real ones: of 100 lines, 39 are
/// blank, 18 cues, 18 dialogue, 17 action and 4 headings; then emphasis, a note and a transition.
QString generatedScript(int length);

/// The text of the UTF-8 file at \a path.
QString readFile(const QString &path);

#endif
