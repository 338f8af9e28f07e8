// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/richtext.h"

#include "host/records.h"
#include "host/writing.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

#include <utility>

namespace Host {
namespace {

constexpr int shownLetters = 40;  // of a paragraph in a message
constexpr int partSize = 1 << 16; // UTF-16 units of HTML that are read at once
// A form that makes its own paragraph right may make the next one wrong, so there are some more
// rounds than forms.
constexpr int lastRound = 4;

QTextBlockFormat blockFormatOf(const Paragraph &paragraph)
{
    const QString name =
        paragraph.titlePage ? titlePageName() : QFnElement::toString(paragraph.type);
    QTextBlockFormat format = ZEMScriptElement::find(records(), name).blockFormat;
    if (paragraph.centred)
        format.setAlignment(Qt::AlignHCenter);
    if (paragraph.depth > 1)
        format.setIndent(paragraph.depth - 1);
    return format;
}

QTextCharFormat textFormatOf(const Stretch &stretch, QFnElement::Type type)
{
    QTextCharFormat format;
    if (stretch.emphasis & Stretch::Bold)
        format.setFontWeight(QFont::Bold);
    if (stretch.emphasis & Stretch::Italic)
        format.setFontItalic(true);
    if (stretch.emphasis & Stretch::Underline)
        format.setFontUnderline(true);
    const QColor colour = workingColour(stretch.working ? stretch.working : type);
    if (colour.isValid())
        format.setForeground(colour);
    return format;
}

Stretch stretchOf(const QTextFragment &fragment)
{
    const QTextCharFormat format = fragment.charFormat();
    // Bold text in HTML of Qt 5 has the weight that Qt 6 calls DemiBold.
    const int emphasis = (format.fontWeight() >= QFont::DemiBold ? Stretch::Bold : 0)
                         | (format.fontItalic() ? Stretch::Italic : 0)
                         | (format.underlineStyle() ? Stretch::Underline : 0);
    return {fragment.text(), emphasis};
}

/// Each letter with its emphasis. That of a line end is not seen, so it counts for none.
QVector<QPair<QChar, int>> lettersOf(const Paragraph &paragraph)
{
    QVector<QPair<QChar, int>> letters;
    for (const Stretch &stretch : paragraph.stretches) {
        for (const QChar c : stretch.text)
            letters.append({c, c == QChar::LineSeparator ? 0 : stretch.emphasis});
    }
    return letters;
}

Paragraph paragraphOf(const QTextBlock &block)
{
    Paragraph paragraph;
    const QFnElement::Type type = typeOf(block);
    paragraph.titlePage = recordOf(block).name == titlePageName();
    if (paragraph.titlePage)
        paragraph.type = QFnElement::General;
    else if (type == QFnElement::PageBreak || (type != QFnElement::Undefined && block.length() > 1))
        paragraph.type = type;
    paragraph.centred = paragraph.type == QFnElement::Action
                        && block.blockFormat().alignment().testFlag(Qt::AlignHCenter);
    if (paragraph.type == QFnElement::SectionHeading)
        paragraph.depth = qBound(0, block.blockFormat().indent(), deepestSection - 1) + 1;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        if (paragraph.source.isEmpty())
            paragraph.source = sourceOfAnchor(it.fragment().charFormat().anchorNames());
        paragraph.stretches.append(stretchOf(it.fragment()));
    }
    if (paragraph.type == QFnElement::PageBreak && paragraph.stretches.isEmpty())
        paragraph.stretches.append({QStringLiteral("===")});
    return paragraph;
}

/// Whether \a read is what \a wanted was written for.
bool isSame(const Paragraph &read, const Paragraph &wanted)
{
    return read.type == wanted.type && read.titlePage == wanted.titlePage
           && read.centred == wanted.centred && read.depth == wanted.depth
           && lettersOf(read) == lettersOf(wanted);
}

QString shown(const Paragraph &paragraph)
{
    QString text;
    for (const Stretch &stretch : paragraph.stretches) {
        if (text.size() <= shownLetters) // A paragraph may be as long as the script.
            text += stretch.text;
    }
    text.replace(QChar(QChar::LineSeparator), u' ');
    if (text.size() > shownLetters)
        text = text.left(shownLetters) + "..."_L1;
    return QStringLiteral("%1 \"%2\"").arg(QFnElement::toString(paragraph.type), text);
}

void tell(int index, const Paragraph &paragraph, const QString &fate, QStringList *messages)
{
    if (messages)
        messages->append(QStringLiteral("paragraph %1, %2, %3")
                             .arg(QString::number(index + 1), shown(paragraph), fate));
}

void appendParagraphs(const QTextDocument &document, QVector<Paragraph> *paragraphs,
                      QStringList *messages)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        Paragraph paragraph = paragraphOf(block);
        int lost = 0;
        for (Stretch &stretch : paragraph.stretches)
            lost |= hasEmphasis(paragraph.type) ? 0 : std::exchange(stretch.emphasis, 0);
        if (lost)
            tell(int(paragraphs->size()), paragraph, "loses its emphasis"_L1, messages);
        paragraphs->append(paragraph);
    }
    // The one block of an empty document is no blank line, unless it says so.
    const bool saysNothing = paragraphs->size() == 1 && paragraphs->first().stretches.isEmpty();
    if (saysNothing && document.begin().userState() != blankLineState)
        paragraphs->clear();
}

/// A script of paragraphs, and who of them reads back otherwise, as what.
struct Attempt
{
    QString text;
    QVector<QPair<int, QString>> wrong;
};

Attempt attempt(QVector<Paragraph> *paragraphs)
{
    Attempt made{written(paragraphs), {}};
    const QVector<Paragraph> readBack = read(made.text);
    auto found = readBack.cbegin();
    for (int i = 0; i < paragraphs->size(); ++i) {
        const Paragraph &wanted = paragraphs->at(i);
        const auto first = found;
        while (found->end < wanted.end)
            ++found;
        if (found != first || found->end != wanted.end || !isSame(*found, wanted))
            made.wrong.append({i, shown(*first) + (found == first ? ""_L1 : " and more"_L1)});
        if (found->end == wanted.end)
            ++found;
    }
    return made;
}

/// The script of \a paragraphs, each in a form that reads back as it is: as it stood in its source,
/// in the customary form or with the mark of its kind. A form that did not help is taken back.
QString writtenScript(QVector<Paragraph> paragraphs, QStringList *messages)
{
    Attempt made = attempt(&paragraphs);
    for (int round = 0; round <= lastRound && !made.wrong.isEmpty(); ++round) {
        for (const auto &wrong : qAsConst(made.wrong)) {
            Paragraph &paragraph = paragraphs[wrong.first];
            paragraph.forced = paragraph.source.isEmpty() && round < lastRound;
            paragraph.source.clear();
        }
        made = attempt(&paragraphs);
    }
    for (const auto &wrong : qAsConst(made.wrong))
        tell(wrong.first, paragraphs.at(wrong.first),
             "has no form in the script and becomes "_L1 + wrong.second, messages);
    return made.text;
}

} // namespace

void insertParagraph(const Paragraph &paragraph, QTextCursor *cursor)
{
    cursor->setBlockFormat(blockFormatOf(paragraph));
    for (const Stretch &stretch : paragraph.stretches) {
        QTextCharFormat format = textFormatOf(stretch, paragraph.type);
        // The source of a paragraph that is not written as custom has it goes along as the name of
        // an anchor: nothing is seen of it, and HTML keeps it.
        if (!paragraph.source.isEmpty() && &stretch == &paragraph.stretches.first()) {
            format.setAnchor(true);
            format.setAnchorNames({sourceAnchor(cursor->blockNumber(), paragraph.source)});
            // Qt finds a format among others by such a number, but not by names.
            format.setProperty(QTextFormat::UserProperty, cursor->blockNumber());
        }
        cursor->insertText(stretch.text, format);
    }
}

void importScript(const QString &text, QTextDocument *document)
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

QString exportScript(const QTextDocument &document, QStringList *messages)
{
    QVector<Paragraph> paragraphs;
    appendParagraphs(document, &paragraphs, messages);
    return writtenScript(paragraphs, messages);
}

QString exportHtml(const QString &html, QStringList *messages)
{
    // Each block that Qt writes stands on a line of its own, if nothing is around it.
    const int body = int(html.indexOf("<body"_L1));
    const bool hasParts =
        body >= 0 && html.contains("name=\"qrichtext\""_L1)
        && !html.contains(QRegularExpression(QStringLiteral("<(table|ul|ol|div)")));
    const int head = hasParts ? int(html.indexOf(u'>', body)) + 1 : 0;
    QVector<Paragraph> paragraphs;
    for (int start = head; start < html.size();) {
        const int next = hasParts ? int(html.indexOf("\n<p "_L1, start + partSize)) : -1;
        const int end = next < 0 ? int(html.size()) : next;
        QTextDocument part;
        part.setHtml(html.mid(0, head) + html.mid(start, end - start));
        appendParagraphs(part, &paragraphs, messages);
        start = end;
    }
    return writtenScript(paragraphs, messages);
}

} // namespace Host
