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

/// A part of one line without the blanks at its ends, and the runs of emphasis marks on both sides:
/// bold is found around italics too.
struct MarkedPart
{
    int left;
    QString before, text, after;
};

MarkedPart partOf(const QTextBlock &block, int from, int to)
{
    const QString line = block.text();
    int start = from - block.position(), end = to - block.position();
    while (start < end && (isEmphasis(line.at(start)) || line.at(start).isSpace()))
        ++start;
    while (end > start && (isEmphasis(line.at(end - 1)) || line.at(end - 1).isSpace()))
        --end;
    int left = start, right = end;
    while (left > 0 && isEmphasis(line.at(left - 1)))
        --left;
    while (right < line.size() && isEmphasis(line.at(right)))
        ++right;
    return {block.position() + left, line.mid(left, start - left), line.mid(start, end - start),
            line.mid(end, right - end)};
}

bool hasMark(const MarkedPart &part, const QString &mark)
{
    return hasMark(part.before, mark) && hasMark(part.after, mark);
}

/// Puts \a mark around \a part or takes it off, and selects the part.
void setMark(QTextCursor *cursor, MarkedPart part, const QString &mark, bool on)
{
    const int right = part.left + int(part.before.size() + part.text.size() + part.after.size());
    if (on && !hasMark(part, mark)) {
        part.before += mark;
        part.after.prepend(mark);
    } else if (!on) {
        part.before.remove(part.before.lastIndexOf(mark), mark.size());
        part.after.remove(part.after.indexOf(mark), mark.size());
    }
    replace(cursor, part.left, right, part.before + part.text + part.after, int(part.before.size()),
            int(part.text.size()));
}

} // namespace

QString Host::fountainFrom(QString html, QStringList *messages)
{
    // The first paragraph of what was copied loses its format by this mark in it.
    html.remove(QLatin1String("<!--StartFragment-->"));
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

// Not toPlainText() nor Qt's own copy, which make blanks of those that do not break.
QString Host::ScriptEditor::text() const
{
    return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

QMimeData *Host::ScriptEditor::createMimeDataFromSelection() const
{
    auto *copied = new QMimeData; // The clipboard takes it.
    copied->setText(
        textCursor().selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n')));
    return copied;
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
    QVector<MarkedPart> parts; // from the last line up, so that the places above hold
    QTextBlock block = document()->findBlock(end);
    for (; block.isValid() && block.position() + block.length() > start; block = block.previous()) {
        const int lineEnd = block.position() + block.length() - 1;
        const MarkedPart part =
            partOf(block, std::max(start, block.position()), std::min(end, lineEnd));
        if (!part.text.isEmpty() || start == end)
            parts.append(part);
    }
    if (parts.isEmpty())
        return;
    const bool on = !std::all_of(parts.cbegin(), parts.cend(),
                                 [&mark](const MarkedPart &part) { return hasMark(part, mark); });
    cursor.beginEditBlock();
    setMark(&cursor, parts.first(), mark, on);
    const QTextCursor last = cursor; // moves along with what changes above
    for (int i = 1; i < parts.size(); ++i)
        setMark(&cursor, parts.at(i), mark, on);
    cursor.endEditBlock();
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
    const int inside = end - start - int(opening.size()) - int(closing.size());
    if (inside >= 0 && selected.startsWith(opening) && selected.endsWith(closing))
        replace(&cursor, start, end, selected.mid(opening.size(), inside), 0, inside);
    else if (left >= 0 && all.mid(left, opening.size()) == opening
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
    // A line separator, which Qt has for Shift, ends no line of a script.
    QKeyEvent lineEnd(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    const bool endsLine = event->matches(QKeySequence::InsertLineSeparator);
    QPlainTextEdit::keyPressEvent(endsLine ? &lineEnd : event);
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
