// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "bridge/ZemFountain.h"

#include "model/qfndocument.h"
#include "model/qfnelement.h"
#include "parser/qfnfastparser.h"
#include "writer/qfnwriter.h"

#include <QtCore/QScopedPointer>
#include <QtGui/QFont>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

#include <algorithm>
#include <iterator>

namespace {

/// Whether QTextCursor starts a new block somewhere in \a text.
bool hasLineEnd(const QString &text)
{
    constexpr ushort lineEnds[] = {'\n', '\r', QChar::ParagraphSeparator, 0xfdd0, 0xfdd1};
    return std::find_first_of(text.cbegin(), text.cend(), std::begin(lineEnds), std::end(lineEnds))
           != text.cend();
}

/// Inserts all entries as one run of text, with nothing between a value and the next key: the title
/// page is one block, unless an entry has line ends of its own.
void renderTitlePage(const QFnDocument::TitlePage &titlePage, QTextCursor *cursor)
{
    if (titlePage.isEmpty())
        return;
    // Each insertion lays its block out anew, so that one for each entry would cost the square of
    // their number. Several entries by one insertion give the same text, blocks and formats, and
    // the same steps of undo: Qt joins insertions that follow each other in one block.
    QString entriesInLine;
    for (auto entry = titlePage.cbegin(); entry != titlePage.cend(); ++entry) {
        const QString text = entry.key() + QLatin1Char(':') + entry.value();
        if (hasLineEnd(text)) {
            cursor->insertText(entriesInLine);
            entriesInLine.clear();
            cursor->insertText(text);
        } else {
            entriesInLine += text;
        }
    }
    cursor->insertText(entriesInLine);
    cursor->insertBlock();
}

/// The formats of a block and of its text.
struct Formats
{
    QTextBlockFormat block;
    QTextCharFormat text;
};

Formats formatsOf(const QFnStyle &style, const ZEMScriptElement &record)
{
    Formats formats{style.toBlockFormat(), style.toTextFormat()};
    if (!record.name.isEmpty()) {
        formats.text.merge(record.charFormat);
        formats.block.merge(record.blockFormat);
    }
    return formats;
}

void openBlock(const QTextDocument &document, const QTextBlockFormat &blockFormat,
               const QTextCharFormat &textFormat, QTextCursor *cursor)
{
    if (!document.isEmpty())
        return cursor->insertBlock(blockFormat, textFormat);
    // The one block that an empty document has is taken over, not left empty in front.
    cursor->setBlockFormat(blockFormat);
    cursor->setBlockCharFormat(textFormat);
    cursor->setCharFormat(textFormat);
}

Qt::Alignment alignmentOf(const QTextBlock &block)
{
    const Qt::Alignment alignment(block.blockFormat().intProperty(QTextFormat::BlockAlignment));
    return alignment.testFlag(Qt::AlignHCenter) ? Qt::AlignHCenter : Qt::AlignLeft;
}

QFnElement *elementOf(const QTextFragment &fragment, QFnElement::Type type, Qt::Alignment alignment)
{
    auto *element = new QFnElement;
    element->type = type;
    element->text = fragment.text();
    element->style.alignment = alignment;
    const QTextCharFormat format = fragment.charFormat();
    if (format.type() == QTextFormat::CharFormat) {
        element->style.bold = format.intProperty(QTextFormat::FontWeight) >= QFont::Bold;
        element->style.italic = format.boolProperty(QTextFormat::FontItalic);
        element->style.underline = format.intProperty(QTextFormat::TextUnderlineStyle) != 0;
    }
    return element;
}

void appendBlock(const QTextBlock &block, QFnElement::Type type, QFnDocument *target)
{
    auto it = block.begin();
    if (it.atEnd()) {
        // An empty block is a blank line of the script, of whatever kind the paragraph is.
        target->elements.append(new QFnElement);
        return;
    }
    const Qt::Alignment alignment = alignmentOf(block);
    for (; !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (fragment.isValid())
            target->elements.append(elementOf(fragment, type, alignment));
    }
}

} // namespace

bool ZEMFountainDocumentRenderer::render(const QFnDocument &source, QTextDocument *document)
{
    if (!document)
        return false;
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::End);
    renderTitlePage(source.titlePage, &cursor);

    // A look-up copies a whole record, so it serves for as long as its name is that of the type.
    // Nothing made from a record outlives it: the next look-up may give another one.
    ZEMScriptElement currentRecord;
    for (const QFnElement *element : source.elements) {
        const QString name = QFnElement::toString(element->type);
        if (name != currentRecord.name)
            currentRecord = ZEMScriptElement::find(scriptElements, name);
        const Formats formats = formatsOf(element->style, currentRecord);
        openBlock(*document, formats.block, formats.text, &cursor);
        const bool parenthetical = element->type == QFnElement::Parenthetical;
        if (parenthetical)
            cursor.insertText(QStringLiteral("("), formats.text);
        cursor.insertText(element->text, formats.text);
        if (parenthetical)
            cursor.insertText(QStringLiteral(")"), formats.text);
    }
    return true;
}

bool ZemFountain::parseText(const QString &text, QTextDocument *document,
                            QList<ZEMScriptElement> *scriptElements, QString *error)
{
    Q_UNUSED(error)
    QFnFastParser parser(nullptr);
    if (!parser.parse(text))
        return false;
    ZEMFountainDocumentRenderer renderer;
    if (scriptElements)
        renderer.scriptElements = *scriptElements;
    return renderer.render(*parser.document, document);
}

bool ZemFountain::toFountainDocument(const QTextDocument &document,
                                     const QList<ZEMScriptElement> &scriptElements,
                                     QFnDocument *target, QString *error)
{
    Q_UNUSED(error)
    Q_ASSERT(target);
    target->clear();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const ZEMScriptElement record = ZEMScriptElement::find(scriptElements, block);
        appendBlock(block, QFnElement::toElementType(record.name), target);
    }
    return true;
}

bool ZemFountain::writeFile(const QString &path, const QTextDocument &document,
                            const QList<ZEMScriptElement> &scriptElements, QString *error)
{
    const QScopedPointer<QFnDocument> model(new QFnDocument(nullptr));
    if (!toFountainDocument(document, scriptElements, model.data(), error))
        return false;
    QFnWriter writer(nullptr);
    const bool written = writer.writeFile(path, model.data());
    if (error)
        *error = writer.errorString;
    return written;
}
