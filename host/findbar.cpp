// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/findbar.h"

#include "model/literals_p.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QTextCursor>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

using Zem::operator""_L1;

Host::FindBar::FindBar(QPlainTextEdit *editor)
    : m_editor(editor)
    , m_sought(new QLineEdit)
    , m_replacement(new QLineEdit)
    , m_case(new QCheckBox("Match &case"_L1))
    , m_message(new QLabel)
{
    m_sought->setPlaceholderText("Find"_L1);
    m_replacement->setPlaceholderText("Replace with"_L1);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(6, 4, 6, 4);
    const auto addButton = [this, grid](int row, int column, const QString &text,
                                        const auto &command) {
        auto *button = new QPushButton(text);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, command);
        grid->addWidget(button, row, column);
    };
    grid->addWidget(m_sought, 0, 0);
    addButton(0, 1, "&Next"_L1, [this] { find(); });
    addButton(0, 2, "&Previous"_L1, [this] { find(QTextDocument::FindBackward); });
    grid->addWidget(m_case, 0, 3);
    grid->addWidget(m_replacement, 1, 0);
    addButton(1, 1, "&Replace"_L1, [this] { replace(); });
    addButton(1, 2, "&All"_L1, [this] { replaceAll(); });
    grid->addWidget(m_message, 1, 3);
    connect(m_sought, &QLineEdit::returnPressed, this, [this] { find(); });
    connect(m_replacement, &QLineEdit::returnPressed, this, [this] { replace(); });
    hide();
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
    const auto sensitive = m_case->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    QTextCursor cursor = m_editor->textCursor();
    if (cursor.hasSelection() && cursor.selectedText().compare(m_sought->text(), sensitive) == 0)
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
    m_message->setText(QStringLiteral("%1 replaced").arg(count));
}

QTextDocument::FindFlags Host::FindBar::flags() const
{
    return m_case->isChecked() ? QTextDocument::FindCaseSensitively : QTextDocument::FindFlags();
}

void Host::FindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    hide();
    m_editor->setFocus();
}
