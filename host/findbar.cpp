// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/findbar.h"

#include "model/literals_p.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QTextCursor>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

using Zem::operator""_L1;

Host::FindBar::FindBar(QPlainTextEdit *editor)
    : m_editor(editor)
    , m_sought(new QLineEdit)
    , m_replacement(new QLineEdit)
    , m_message(new QLabel)
{
    setWindowTitle("Find and Replace"_L1); // in the menu of what the window can show
    setObjectName("find"_L1);              // for the state of the window
    setMovable(false);
    m_sought->setPlaceholderText("Find"_L1);
    addWidget(m_sought);
    addAction("Next"_L1, this, [this] { find(); });
    addAction("Previous"_L1, this, [this] { find(QTextDocument::FindBackward); });
    m_case = addAction("Match case"_L1);
    m_case->setCheckable(true);
    m_replacement->setPlaceholderText("Replace with"_L1);
    addWidget(m_replacement);
    addAction("Replace"_L1, this, [this] { replace(); });
    addAction("All"_L1, this, [this] { replaceAll(); });
    addWidget(m_message);
    connect(m_sought, &QLineEdit::returnPressed, this, [this] { find(); });
    connect(m_replacement, &QLineEdit::returnPressed, this, [this] { replace(); });
}

void Host::FindBar::open()
{
    const QString selected = m_editor->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        m_sought->setText(selected);
    show();
    m_sought->setFocus();
    m_sought->selectAll();
}

void Host::FindBar::find(QTextDocument::FindFlags direction)
{
    const QString sought = m_sought->text();
    m_message->clear();
    if (sought.isEmpty() || m_editor->find(sought, flags() | direction))
        return;
    QTextCursor from(m_editor->document());
    if (direction & QTextDocument::FindBackward)
        from.movePosition(QTextCursor::End);
    const QTextCursor found = m_editor->document()->find(sought, from, flags() | direction);
    if (found.isNull())
        m_message->setText("Not found"_L1);
    else
        m_editor->setTextCursor(found);
}

/// Replaces the place that is selected and goes to the next.
void Host::FindBar::replace()
{
    QTextCursor cursor = m_editor->textCursor();
    const int start = cursor.selectionStart();
    const QTextCursor found = m_editor->document()->find(m_sought->text(), start, flags());
    if (cursor.hasSelection() && found.selectionStart() == start
        && found.selectionEnd() == cursor.selectionEnd())
        cursor.insertText(m_replacement->text());
    find();
}

void Host::FindBar::replaceAll()
{
    int count = 0;
    QTextCursor all(m_editor->document());
    all.beginEditBlock();
    QTextCursor found = m_editor->document()->find(m_sought->text(), 0, flags());
    for (; !found.isNull(); ++count) {
        found.insertText(m_replacement->text());
        found = m_editor->document()->find(m_sought->text(), found, flags());
    }
    all.endEditBlock();
    m_message->setText(QString::number(count) + " replaced"_L1);
}

QTextDocument::FindFlags Host::FindBar::flags() const
{
    return m_case->isChecked() ? QTextDocument::FindCaseSensitively : QTextDocument::FindFlags();
}

void Host::FindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return QToolBar::keyPressEvent(event);
    hide();
    m_editor->setFocus();
}
