// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_HIGHLIGHTER_H
#define HOST_HIGHLIGHTER_H

#include "host/reading.h"

#include <QtGui/QSyntaxHighlighter>

namespace Host {

/// Sets off the kinds, notes, comments and emphasis in the text of a script, as it was last read.
///
/// A line that changes between two readings keeps its look, moved along with its letters.
class Highlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    /// A highlighter that \a document, the text of the script, owns.
    explicit Highlighter(QTextDocument *document);

    /// Gives each line the look that it has in \a script, the reading of the text as it stands.
    /// Only lines whose look is another are drawn anew.
    void setScript(const QVector<Paragraph> &script);

    /// Takes the colours for a \a dark or a light ground.
    void setDark(bool dark);

protected:
    void highlightBlock(const QString &text) override;

private:
    QTextCharFormat format(int look) const;

    bool m_dark = false;
};

} // namespace Host

#endif
