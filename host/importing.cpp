// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/importing.h"

#include "host/reading.h"
#include "host/records.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

namespace {

QTextBlockFormat blockFormatOf(const Host::Paragraph &paragraph)
{
    const QString name =
        paragraph.titlePage ? Host::titlePageName() : QFnElement::toString(paragraph.type);
    QTextBlockFormat format = ZEMScriptElement::find(Host::records(), name).blockFormat;
    if (paragraph.centred)
        format.setAlignment(Qt::AlignHCenter);
    if (paragraph.depth > 1)
        format.setIndent(paragraph.depth - 1);
    return format;
}

QTextCharFormat textFormatOf(const Host::Stretch &stretch, QFnElement::Type type)
{
    QTextCharFormat format;
    if (stretch.bold)
        format.setFontWeight(QFont::Bold);
    if (stretch.italic)
        format.setFontItalic(true);
    if (stretch.underline)
        format.setFontUnderline(true);
    if (stretch.kind != Host::Stretch::Text)
        type = stretch.kind == Host::Stretch::Note ? QFnElement::Notes : QFnElement::Boneyard;
    const QColor colour = Host::workingColour(type);
    if (colour.isValid())
        format.setForeground(colour);
    return format;
}

} // namespace

void Host::insertParagraph(const Paragraph &paragraph, QTextCursor *cursor)
{
    cursor->setBlockFormat(blockFormatOf(paragraph));
    QVector<Stretch> stretches = paragraph.stretches;
    if (!paragraph.sceneNumber.isEmpty()) {
        Stretch number;
        number.text = QStringLiteral(" #%1#").arg(paragraph.sceneNumber);
        number.kind = Stretch::Note;
        stretches.append(number);
    }
    // The source of a paragraph that is not written as custom has it goes along as the name of an
    // anchor: nothing is seen of it, and HTML keeps it.
    QString source = paragraph.source;
    for (const Stretch &stretch : qAsConst(stretches)) {
        QTextCharFormat format = textFormatOf(stretch, paragraph.type);
        if (!source.isEmpty()) {
            format.setAnchor(true);
            format.setAnchorNames({sourceAnchor(cursor->blockNumber(), source)});
            source.clear();
        }
        cursor->insertText(stretch.text, format);
    }
}

void Host::importScript(const QString &text, QTextDocument *document)
{
    const QVector<Paragraph> paragraphs = read(text);
    document->setDefaultFont(scriptFont());
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (int i = 0; i < paragraphs.size(); ++i) {
        if (i > 0)
            cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
        insertParagraph(paragraphs.at(i), &cursor);
    }
    // The one block of an empty document is no blank line, unless it says so.
    if (paragraphs.size() == 1 && paragraphs.first().text().isEmpty())
        cursor.block().setUserState(blankLineState);
    cursor.endEditBlock();
}
