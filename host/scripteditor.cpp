// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/scripteditor.h"

#include "host/records.h"
#include "host/richtext.h"

#include <QtCore/QMimeData>
#include <QtGui/QTextBlock>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QScrollBar>

#include <algorithm>

namespace {

bool isEmphasis(QChar c)
{
    return c == QLatin1Char('*') || c == QLatin1Char('_');
}

/// Whether a run of emphasis marks has \a mark. One asterisk or three are italics, two or three
/// are bold.
bool hasMark(const QString &run, const QString &mark)
{
    const auto asterisks = run.count(QLatin1Char('*'));
    if (mark.startsWith(QLatin1Char('_')))
        return run.contains(mark);
    return mark.size() == 1 ? asterisks % 2 == 1 : asterisks >= 2;
}

/// Replaces what stands from \a from to \a to by \a text, and selects its \a length letters from
/// \a start on.
void replace(QTextCursor *cursor, int from, int to, const QString &text, int start, int length)
{
    cursor->setPosition(from);
    cursor->setPosition(to, QTextCursor::KeepAnchor);
    cursor->insertText(text);
    cursor->setPosition(from + start);
    cursor->setPosition(from + start + length, QTextCursor::KeepAnchor);
}

/// Puts \a mark around a part of one line, or takes it off, and selects the part. The runs of marks
/// on both sides are taken in, so that bold is found around italics too.
void toggleInLine(QTextCursor *cursor, int from, int to, const QString &mark)
{
    const QTextBlock block = cursor->document()->findBlock(from);
    const QString text = block.text();
    int start = from - block.position(), end = to - block.position();
    while (start < end && isEmphasis(text.at(start)))
        ++start;
    while (end > start && isEmphasis(text.at(end - 1)))
        --end;
    int left = start, right = end;
    while (left > 0 && isEmphasis(text.at(left - 1)))
        --left;
    while (right < text.size() && isEmphasis(text.at(right)))
        ++right;
    QString before = text.mid(left, start - left), after = text.mid(end, right - end);
    if (hasMark(before, mark) && hasMark(after, mark)) {
        before.remove(before.lastIndexOf(mark), mark.size());
        after.remove(after.indexOf(mark), mark.size());
    } else {
        before += mark;
        after.prepend(mark);
    }
    replace(cursor, block.position() + left, block.position() + right,
            before + text.mid(start, end - start) + after, int(before.size()), end - start);
}

} // namespace

QString Host::fountainFrom(const QString &html, QStringList *messages)
{
    QTextDocument document;
    document.setHtml(html);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (!recordOf(block).name.isEmpty())
            return exportScript(document, messages);
    }
    return {};
}

Host::ScriptEditor::ScriptEditor()
{
    setFont(scriptFont());
    document()->setDocumentMargin(linePixels);
    setFrameShape(NoFrame);
    m_completer.setModel(&m_offers);
    m_completer.setWidget(this);
    connect(&m_completer, QOverload<const QString &>::of(&QCompleter::activated), this,
            [this](const QString &offered) {
                QTextCursor cursor = textCursor();
                cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
                cursor.insertText(offered);
            });
}

QString Host::ScriptEditor::text() const
{
    // Not toPlainText(), which makes blanks of those that do not break.
    return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void Host::ScriptEditor::setOffers(const QStringList &characters, const QStringList &places)
{
    m_characters = characters;
    m_places = places;
}

void Host::ScriptEditor::toggleEmphasis(const QString &mark)
{
    QTextCursor cursor = textCursor();
    const int start = cursor.selectionStart(), end = cursor.selectionEnd();
    QTextBlock block = document()->findBlock(end);
    QTextCursor last; // the end of the last part, which moves along with what changes above
    cursor.beginEditBlock();
    // From the last line up, so that the places above hold.
    for (; block.isValid() && block.position() + block.length() > start; block = block.previous()) {
        const int from = std::max(start, block.position());
        const int to = std::min(end, block.position() + block.length() - 1);
        if (from == to && start != end)
            continue;
        toggleInLine(&cursor, from, to, mark);
        if (last.isNull())
            last = cursor;
    }
    cursor.endEditBlock();
    if (last.isNull())
        return;
    cursor.setPosition(cursor.selectionStart());
    cursor.setPosition(last.selectionEnd(), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void Host::ScriptEditor::toggleAround(const QString &opening, const QString &closing)
{
    QTextCursor cursor = textCursor();
    const int start = cursor.selectionStart(), end = cursor.selectionEnd();
    const QString all = text(), selected = all.mid(start, end - start);
    const int left = start - int(opening.size()), right = end + int(closing.size());
    if (left >= 0 && all.mid(left, opening.size()) == opening
        && all.mid(end, closing.size()) == closing)
        replace(&cursor, left, right, selected, 0, end - start);
    else
        replace(&cursor, start, end, opening + selected + closing, int(opening.size()),
                end - start);
    setTextCursor(cursor);
}

void Host::ScriptEditor::goTo(int position)
{
    setTextCursor(QTextCursor(document()->findBlock(position)));
    verticalScrollBar()->setValue(textCursor().block().firstLineNumber());
}

void Host::ScriptEditor::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (m_completer.popup()->isVisible()) {
        if (key == Qt::Key_Escape)
            m_declined = textCursor().blockNumber();
        // The list takes these.
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape)
            return event->ignore();
    }
    QPlainTextEdit::keyPressEvent(event);
    if (textCursor().blockNumber() != m_declined)
        m_declined = -1;
    const QString typed = event->text();
    if (!typed.isEmpty() && (typed.at(0).isPrint() || key == Qt::Key_Backspace))
        offer();
    else
        m_completer.popup()->hide();
}

void Host::ScriptEditor::offer()
{
    const QTextBlock block = textCursor().block();
    const QString line = block.text();
    const QTextBlock above = block.previous();
    QStringList offers;
    if (textCursor().atBlockEnd() && !line.isEmpty() && line.at(0).isUpper()
        && line == line.toUpper() && (!above.isValid() || above.length() == 1)
        && block.blockNumber() != m_declined) {
        const bool heading =
            line.startsWith(QLatin1String("INT")) || line.startsWith(QLatin1String("EXT"));
        for (const QString &one : heading ? m_places : m_characters) {
            if (one.startsWith(line))
                offers.append(one);
        }
    }
    // A line that is an offer already is complete: Return is to end it.
    if (offers.isEmpty() || offers.contains(line)) {
        m_completer.popup()->hide();
        return;
    }
    m_offers.setStringList(offers);
    QRect place = cursorRect();
    place.setWidth(fontMetrics().averageCharWidth() * 40);
    m_completer.complete(place);
    m_completer.popup()->setCurrentIndex(m_completer.completionModel()->index(0, 0));
}

bool Host::ScriptEditor::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasText() && !source->hasUrls();
}

void Host::ScriptEditor::insertFromMimeData(const QMimeData *source)
{
    QStringList messages;
    const QString script = source->hasHtml() ? fountainFrom(source->html(), &messages) : QString();
    if (script.isNull())
        QPlainTextEdit::insertFromMimeData(source);
    else
        textCursor().insertText(script);
    ensureCursorVisible();
    Q_EMIT richTextInserted(messages);
}
