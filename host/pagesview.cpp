// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/pagesview.h"

#include "host/records.h"
#include "host/richtext.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QTextBlock>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int pageMargin = 48;                  // pixels
constexpr int pageWidth = 576 + 2 * pageMargin; // six inches of text
constexpr qreal letterPixels = 9.6 - 1.0 / 64;  // no more than that, in steps of a 64th

/// The face of a script at such a width that sixty letters go on a line, on any screen: margins are
/// in pixels, points may be of any size, and many faces are a hair too wide.
QFont pageFont()
{
    QFont font = Host::scriptFont();
    font.setPixelSize(Host::linePixels);
    const qreal own = QFontMetricsF(font).horizontalAdvance(u'x');
    font.setLetterSpacing(QFont::AbsoluteSpacing, letterPixels - own);
    return font;
}

/// Whether both look alike, wherever they stand in the source.
bool sameLook(const Host::Paragraph &a, const Host::Paragraph &b)
{
    return a.type == b.type && a.titlePage == b.titlePage && a.centred == b.centred
           && a.source == b.source && a.depth == b.depth && a.sceneNumber == b.sceneNumber
           && a.stretches == b.stretches;
}

} // namespace

Host::PagesView::PagesView()
    : m_script(1)
{
    // Paper is white in a dark scheme of colours too.
    QPalette colours = palette();
    colours.setColor(QPalette::Window, QColor(0xc8, 0xc8, 0xc8));
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    setPalette(colours);
    setAutoFillBackground(true);
    setFrameShape(NoFrame);
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(FixedPixelWidth);
    setLineWrapColumnOrWidth(pageWidth);
    document()->setDocumentMargin(pageMargin);
    document()->setDefaultFont(pageFont());
}

void Host::PagesView::setScript(const QVector<Paragraph> &script)
{
    const QVector<Paragraph> shown = script.isEmpty() ? QVector<Paragraph>(1) : script;
    const auto changed =
        std::mismatch(m_script.cbegin(), m_script.cend(), shown.cbegin(), shown.cend(), sameLook);
    int front = int(changed.second - shown.cbegin());
    const auto tail =
        std::mismatch(m_script.crbegin(), std::make_reverse_iterator(changed.first),
                      shown.crbegin(), std::make_reverse_iterator(changed.second), sameLook);
    int oldEnd = int(tail.first.base() - m_script.cbegin());
    int newEnd = int(tail.second.base() - shown.cbegin());
    const bool same = front == oldEnd && front == newEnd;
    m_script = shown;
    if (same)
        return;
    // At least one block is filled anew, so that one can be added or taken away behind it.
    if (front == oldEnd || front == newEnd) {
        if (front > 0) {
            --front;
        } else {
            ++oldEnd;
            ++newEnd;
        }
    }
    const QTextBlock last = document()->findBlockByNumber(oldEnd - 1);
    QTextCursor cursor(document()->findBlockByNumber(front));
    cursor.beginEditBlock();
    cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    for (int i = front; i < newEnd; ++i) {
        if (i > front)
            cursor.insertBlock();
        insertParagraph(shown.at(i), &cursor);
    }
    cursor.endEditBlock();
}

void Host::PagesView::showParagraph(int index)
{
    const QTextBlock block = document()->findBlockByNumber(index);
    if (!block.isValid())
        return;
    ExtraSelection mark;
    mark.cursor = QTextCursor(block);
    mark.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    mark.format.setBackground(QColor(0xff, 0xf3, 0xc4));
    mark.format.setProperty(QTextFormat::FullWidthSelection, true); // a blank line has no letters
    setExtraSelections({mark});
    setTextCursor(QTextCursor(block));
    // Not at an edge: what stands around it is of interest too.
    const int top = cursorRect().top(), height = viewport()->height();
    if (std::abs(top - height / 2) > height * 3 / 8)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + top - height / 3);
}

/// Does not take another size of letters with Ctrl, as QTextEdit does.
void Host::PagesView::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() & Qt::ControlModifier)
        return event->ignore();
    QTextEdit::wheelEvent(event);
}

void Host::PagesView::resizeEvent(QResizeEvent *event)
{
    const int free = width() - verticalScrollBar()->sizeHint().width() - pageWidth;
    const int side = std::max(0, free / 2);
    setViewportMargins(side, 0, side, 0);
    QTextEdit::resizeEvent(event);
}
