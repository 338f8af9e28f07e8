// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_FINDBAR_H
#define HOST_FINDBAR_H

#include <QtGui/QTextDocument>
#include <QtWidgets/QToolBar>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace Host {

/// A bar to find and replace in the text of an editor. Hidden at first.
class FindBar : public QToolBar
{
    Q_OBJECT

public:
    /// A bar for \a editor, which must outlive it.
    explicit FindBar(QPlainTextEdit *editor);

    /// Shows the bar with what is selected in the editor, ready to type in.
    void open();

    /// Selects the next place, or the one before with FindBackward in \a direction, and goes on
    /// from the other end of the text.
    void find(QTextDocument::FindFlags direction = {});

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void replace();
    void replaceAll();
    QTextDocument::FindFlags flags() const;

    QPlainTextEdit *m_editor;
    QLineEdit *m_sought, *m_replacement;
    QAction *m_case;
    QLabel *m_message;
};

} // namespace Host

#endif
