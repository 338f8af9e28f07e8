// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef GUIDE_H
#define GUIDE_H

#include "base/ZEMScriptElement.h"

class QFnDocument;
class QTextDocument;

// The pieces of code that docs/developers.md shows. What is changed here is changed there.

/// Gives the text that an import left without a weight the normal one.
void mendWeights(QTextDocument *document);

/// Puts the empty elements into \a script with which it reads back as it is.
void layOut(QFnDocument *script);

/// Saves \a document as Fountain text, laid out, whole or not at all. Gives whether it was saved.
bool save(const QString &path, const QTextDocument &document,
          const QList<ZEMScriptElement> &paragraphKinds);

#endif
