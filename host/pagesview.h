// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_PAGESVIEW_H
#define HOST_PAGESVIEW_H

#include "host/reading.h"

#include <QtWidgets/QTextEdit>

namespace Host {

/// A script as rich text on paper, to look at and to copy from. A block for each paragraph.
class PagesView : public QTextEdit
{
    Q_OBJECT

public:
    PagesView();

    /// Shows \a script. Only paragraphs that are not as they were before are laid out.
    void setScript(const QVector<Paragraph> &script);

    /// Marks the paragraph of this \a index and brings it into view. Any other index is ignored.
    void showParagraph(int index);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QVector<Paragraph> m_script; ///< what is shown, never empty
};

} // namespace Host

#endif
