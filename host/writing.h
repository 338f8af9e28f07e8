// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_WRITING_H
#define HOST_WRITING_H

#include <QtCore/QString>
#include <QtCore/QVector>

/// Paragraphs as the text of a script, the way back from reading.
namespace Host {

struct Paragraph;

/// How a paragraph is written: as it stood in its source, if it has one; in the customary form; or
/// with a mark that forces its kind.
enum class Form { Source, Customary, Forced };

/// \a paragraph in \a form, with the line end behind it and the blank line that parts it from the
/// paragraph \a above, which is null for the first one.
QString written(const Paragraph &paragraph, const Paragraph *above, Form form);

/// The script with these paragraphs. Of what read() gave, that is the source.
QString written(const QVector<Paragraph> &paragraphs);

} // namespace Host

#endif
