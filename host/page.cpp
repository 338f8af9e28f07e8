// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/page.h"

#include "host/importing.h"
#include "host/records.h"
#include "model/qfnstyle.h"

#include <QtCore/QMimeData>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <iterator>

namespace {

struct Kind
{
    QLatin1String record;
    QLatin1String next; ///< the kind of the paragraph that Return begins
};

constexpr QLatin1String action("Action");
constexpr QLatin1String pageBreak("PageBreak");
constexpr QLatin1String sceneHeading("SceneHeading");

constexpr Kind kinds[] = {
    {sceneHeading, action},
    {action, action},
    {QLatin1String("Character"), QLatin1String("Dialogue")},
    {QLatin1String("Parenthetical"), QLatin1String("Dialogue")},
    {QLatin1String("Dialogue"), QLatin1String("Character")},
    {QLatin1String("Transition"), sceneHeading},
    {QLatin1String("SectionHeading"), sceneHeading},
    {QLatin1String("Synopsis"), sceneHeading},
    {QLatin1String("Notes"), action},
    {QLatin1String("Boneyard"), QLatin1String("Boneyard")},
    {pageBreak, sceneHeading},
    {QLatin1String("Title Page"), QLatin1String("Title Page")},
};
constexpr int tabKinds = 6; // Tab goes through those that scenes are made of.

/// The row of the kind called \a record, or -1.
int indexOf(const QString &record)
{
    const auto kind = std::find_if(std::begin(kinds), std::end(kinds),
                                   [&record](const Kind &k) { return k.record == record; });
    return kind == std::end(kinds) ? -1 : int(kind - std::begin(kinds));
}

QTextBlockFormat formatOf(QLatin1String record)
{
    QTextBlockFormat format = QFnStyle().toBlockFormat();
    format.merge(ZEMScriptElement::find(Host::records(), record).blockFormat);
    return format;
}

const QLatin1String pageBreakText("===");

constexpr int pageMargin = 48;                  // pixels
constexpr int pageWidth = 576 + 2 * pageMargin; // six inches of text

} // namespace

Host::ScriptPage::ScriptPage()
{
    // A page is white in a dark scheme of colours too.
    QPalette colours = palette();
    colours.setColor(QPalette::Window, QColor(0xc8, 0xc8, 0xc8));
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    setPalette(colours);
    setAutoFillBackground(true);
    setFrameShape(QFrame::NoFrame);
    setLineWrapMode(FixedPixelWidth);
    setLineWrapColumnOrWidth(pageWidth);
    document()->setDocumentMargin(pageMargin);
    takeFont();
    document()->setUndoRedoEnabled(false);
    setKind(indexOf(action));
    document()->setUndoRedoEnabled(true);
    document()->setModified(false);
    connect(this, &QTextEdit::textChanged, this, &ScriptPage::giveKind);
}

QStringList Host::ScriptPage::kindNames()
{
    QStringList names;
    for (const Kind &row : kinds) {
        const QString name = QFnElement::toString(QFnElement::toElementType(row.record));
        names.append(row.record == titlePageName() ? titlePageName() : name);
    }
    return names;
}

int Host::ScriptPage::kind() const
{
    return indexOf(recordOf(textCursor().block()).name);
}

void Host::ScriptPage::setKind(int index)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    if (kinds[index].record == pageBreak && cursor.block().length() == 1)
        cursor.insertText(pageBreakText);
    cursor.setBlockFormat(formatOf(kinds[index].record));
    cursor.endEditBlock();
}

void Host::ScriptPage::setScript(const QString &text)
{
    document()->clear();
    importScript(text, document());
    takeFont();
    document()->setModified(false);
    moveCursor(QTextCursor::Start);
}

void Host::ScriptPage::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Tab:
        return goThroughKinds(1);
    case Qt::Key_Backtab:
        return goThroughKinds(-1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return goOn(event->modifiers() & Qt::ShiftModifier);
    default:
        QTextEdit::keyPressEvent(event);
    }
}

void Host::ScriptPage::resizeEvent(QResizeEvent *event)
{
    const int free = width() - verticalScrollBar()->sizeHint().width() - pageWidth;
    setViewportMargins(std::max(0, free / 2), 0, std::max(0, free / 2), 0);
    QTextEdit::resizeEvent(event);
}

bool Host::ScriptPage::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasText() && !source->hasUrls(); // A file is for the window.
}

// Keeps the kinds of what was copied here. Formats from elsewhere belong to no kind.
void Host::ScriptPage::insertFromMimeData(const QMimeData *source)
{
    if (source->html().contains(QLatin1String("name=\"qrichtext\"")))
        return QTextEdit::insertFromMimeData(source);
    insertPlainText(source->text());
    ensureCursorVisible();
}

void Host::ScriptPage::goThroughKinds(int step)
{
    const int index = kind();
    const bool usual = index >= 0 && index < tabKinds;
    setKind(usual ? (index + step + tabKinds) % tabKinds : indexOf(action));
}

void Host::ScriptPage::goOn(bool toSameKind)
{
    QTextCursor cursor = textCursor();
    const int index = kind();
    if (cursor.block().length() == 1 && !toSameKind && index != indexOf(action))
        return setKind(indexOf(action));
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const bool keepsKind = toSameKind || index < 0 || !cursor.atBlockEnd();
    cursor.insertBlock(keepsKind ? cursor.blockFormat() : formatOf(kinds[index].next), {});
    cursor.endEditBlock();
    setTextCursor(cursor);
}

/// Makes action of text without a kind, which comes into paragraphs that the library left
/// empty, and of text in a page break, which would not be written.
void Host::ScriptPage::giveKind()
{
    const QTextBlock block = textCursor().block();
    const QString record = recordOf(block).name;
    const bool lost = record == pageBreak && block.text() != pageBreakText;
    // While there is something to redo, the change was one by undo and needs nothing.
    if (block.length() == 1 || !(record.isEmpty() || lost) || document()->isRedoAvailable())
        return;
    QTextCursor cursor(block);
    cursor.joinPreviousEditBlock();
    cursor.setBlockFormat(formatOf(action));
    cursor.endEditBlock();
}

/// Sixty letters to a line on any screen: points may not be of the size that the margins, in
/// pixels, go with.
void Host::ScriptPage::takeFont()
{
    QFont font = scriptFont();
    font.setPixelSize(linePixels);
    document()->setDefaultFont(font);
}
