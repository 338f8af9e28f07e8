// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/pdf.h"

#include "host/records.h"
#include "host/titlepage.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextLayout>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr int pageLines = 54; // nine inches of six lines
constexpr int dotsPerInch = 1200;
constexpr qreal lineHeight = dotsPerInch / 6.0;
constexpr qreal columnLeft = 1.5 * dotsPerInch;
constexpr qreal columnWidth = 6.0 * dotsPerInch;
constexpr qreal columnTop = 1.0 * dotsPerInch;
constexpr qreal numberTop = 0.5 * dotsPerInch;
constexpr qreal pixel = dotsPerInch / 96.0; // of a block format

/// One paragraph of a page.
struct Paragraph
{
    QFnElement::Type type = QFnElement::Undefined;
    QTextBlockFormat format;
    QString text;
    QVector<QTextLayout::FormatRange> styles;
    bool startsPage = false;
    std::unique_ptr<QTextLayout> layout; ///< Null before layOut().
    int needed = 0; ///< Lines that must be free on a page for the paragraph to begin there.

    int lineCount() const { return layout->lineCount(); }
    int linesAbove() const { return qRound(format.topMargin() / Host::linePixels); }
};

bool isWorkingMaterial(QFnElement::Type type)
{
    return type == QFnElement::Notes || type == QFnElement::Boneyard || type == QFnElement::Synopsis
           || type == QFnElement::SectionHeading;
}

bool isSpeech(QFnElement::Type type)
{
    return type == QFnElement::Dialogue || type == QFnElement::Parenthetical;
}

bool staysWithNext(QFnElement::Type type)
{
    return type == QFnElement::SceneHeading || type == QFnElement::Character
           || type == QFnElement::Parenthetical;
}

/// Adds the text of \a block. Blanks go that only parted it from a parenthetical or a note.
void appendText(const QTextBlock &block, Paragraph *paragraph)
{
    QString text = block.text();
    int skipped = 0;
    if (paragraph->type == QFnElement::Dialogue || paragraph->text.endsWith(QLatin1Char(' '))) {
        while (skipped < text.size() && text.at(skipped) == QLatin1Char(' '))
            ++skipped;
    }
    const int shift = paragraph->text.size() - skipped;
    for (QTextLayout::FormatRange range : block.textFormats()) {
        const int start = std::max(range.start, skipped);
        range.length -= start - range.start;
        range.start = start + shift;
        paragraph->styles.append(range);
    }
    text.remove(0, skipped);
    const bool capitals =
        paragraph->type == QFnElement::SceneHeading || paragraph->type == QFnElement::Character;
    paragraph->text += capitals ? text.toUpper() : text;
}

/// The paragraphs of the script that are printed, from \a block on.
std::vector<Paragraph> printedParagraphs(QTextBlock block)
{
    std::vector<Paragraph> paragraphs;
    bool startsPage = false;
    bool lineOpen = false; // whether the last paragraph is of the line that a block may continue
    for (; block.isValid(); block = block.next()) {
        const QFnElement::Type type = Host::typeOf(block);
        const bool goesOn = Host::continuesLine(block) && lineOpen;
        if (type == QFnElement::PageBreak)
            startsPage = true;
        if (type == QFnElement::PageBreak || isWorkingMaterial(type)) {
            lineOpen = goesOn;
            continue;
        }
        // Behind the title page, at the start of a page, or beside what is not printed.
        if (block.length() == 1
            && (paragraphs.empty() || startsPage
                || isWorkingMaterial(Host::typeOf(block.previous()))
                || isWorkingMaterial(Host::typeOf(block.next()))))
            continue;
        if (!goesOn) {
            paragraphs.emplace_back();
            paragraphs.back().type = type;
            paragraphs.back().format = block.blockFormat();
            paragraphs.back().startsPage = startsPage;
            startsPage = false;
        }
        lineOpen = type == QFnElement::Action;
        appendText(block, &paragraphs.back());
    }
    while (!paragraphs.empty() && paragraphs.back().text.isEmpty())
        paragraphs.pop_back();
    return paragraphs;
}

/// Breaks the text into lines. \a device gives the widths of the letters.
void layOut(Paragraph *paragraph, QPaintDevice *device)
{
    const QTextBlockFormat &format = paragraph->format;
    const qreal width = columnWidth - (format.leftMargin() + format.rightMargin()) * pixel;
    auto layout = std::make_unique<QTextLayout>(paragraph->text, Host::scriptFont(), device);
    QTextOption option(format.alignment());
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout->setTextOption(option);
    layout->setFormats(paragraph->styles);
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine())
        line.setLineWidth(width);
    layout->endLayout();
    paragraph->layout = std::move(layout);
}

/// Backwards, because what stays with the next paragraph needs the room that this one needs.
void findNeededLines(std::vector<Paragraph> *paragraphs)
{
    constexpr int shortSpeech = 8; // is not torn
    int below = 0;
    bool speechBelow = false;
    for (auto p = paragraphs->rbegin(); p != paragraphs->rend(); ++p) {
        const int lines = p->lineCount();
        const bool speech = isSpeech(p->type);
        const bool goesOn = speech && speechBelow && lines + below <= shortSpeech;
        // Neither the first nor the last line of a paragraph stands alone on a page.
        const int own = lines > 3 ? 2 : lines;
        p->needed = staysWithNext(p->type) || goesOn ? lines + below : own;
        p->needed = std::min(p->needed, pageLines);
        below = p->linesAbove() + p->needed;
        speechBelow = speech;
    }
}

/// Draws paragraphs line by line onto the pages of a PDF.
class Pages
{
public:
    explicit Pages(QPdfWriter *writer)
        : m_writer(writer)
        , m_painter(writer)
    {
        m_painter.setFont(Host::scriptFont());
    }

    void drawTitlePage(const QList<QPair<QString, QString>> &entries);
    void drawScript(const std::vector<Paragraph> &paragraphs);

private:
    void drawLines(const Paragraph &paragraph, int first, int count);
    void startPage();

    QPdfWriter *m_writer;
    QPainter m_painter;
    int m_line = 0; ///< The line of the page that comes next.
    int m_page = 1;
};

/// The names of the work in the upper part, the rest at the foot, all centred, without the keys.
void Pages::drawTitlePage(const QList<QPair<QString, QString>> &entries)
{
    constexpr int firstLine = 16;
    std::vector<Paragraph> paragraphs;
    int footLines = 0;
    size_t head = 0;
    for (const auto &entry : entries) {
        const bool inHead = Host::isHeadOfTitlePage(entry.first);
        for (const QString &text : entry.second.split(QLatin1Char('\n'))) {
            paragraphs.emplace_back();
            paragraphs.back().text = text.trimmed();
            paragraphs.back().format.setAlignment(Qt::AlignHCenter);
            layOut(&paragraphs.back(), m_writer);
            footLines += inHead ? 0 : paragraphs.back().lineCount();
        }
        // A blank line between two entries.
        paragraphs.back().format.setBottomMargin(Host::linePixels);
        footLines += inHead ? 0 : 1;
        if (inHead)
            head = paragraphs.size();
    }
    m_line = firstLine;
    for (size_t i = 0; i < paragraphs.size(); ++i) {
        if (i == head)
            m_line = std::max(m_line, pageLines + 1 - footLines);
        drawLines(paragraphs[i], 0, paragraphs[i].lineCount());
        m_line += qRound(paragraphs[i].format.bottomMargin() / Host::linePixels);
    }
    m_writer->newPage();
    m_line = 0;
}

void Pages::drawScript(const std::vector<Paragraph> &paragraphs)
{
    for (const Paragraph &paragraph : paragraphs) {
        const int above = m_line > 0 ? paragraph.linesAbove() : 0;
        if (m_line > 0 && (paragraph.startsPage || m_line + above + paragraph.needed > pageLines))
            startPage();
        else
            m_line += above;
        const int lines = paragraph.lineCount();
        for (int drawn = 0; drawn < lines;) {
            if (m_line >= pageLines)
                startPage();
            int count = std::min(lines - drawn, pageLines - m_line);
            if (lines - drawn - count == 1 && count > 1)
                --count;
            drawLines(paragraph, drawn, count);
            drawn += count;
            if (drawn < lines)
                startPage();
        }
    }
}

void Pages::drawLines(const Paragraph &paragraph, int first, int count)
{
    const qreal left = columnLeft + paragraph.format.leftMargin() * pixel;
    for (int i = first; i < first + count; ++i, ++m_line) {
        const QTextLine line = paragraph.layout->lineAt(i);
        line.draw(&m_painter, QPointF(left, columnTop + m_line * lineHeight - line.y()));
    }
}

void Pages::startPage()
{
    m_writer->newPage();
    m_line = 0;
    ++m_page;
    const QRectF place(columnLeft, numberTop, columnWidth, lineHeight);
    m_painter.drawText(place, Qt::AlignRight | Qt::AlignTop, QStringLiteral("%1.").arg(m_page));
}

} // namespace

QByteArray Host::toPdf(const QTextDocument &document)
{
    QTextBlock block = document.begin();
    QString titleText;
    for (; block.isValid() && recordOf(block).name == titlePageName(); block = block.next())
        titleText += block.text() + QLatin1Char('\n');
    QFnFastParser parser(nullptr);
    parser.parse(titleText);
    const auto entries = titleEntries(parser.document->titlePage);

    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QPageSize::Letter));
        writer.setPageMargins(QMarginsF());
        writer.setResolution(dotsPerInch);
        writer.setCreator(QCoreApplication::applicationName());
        std::vector<Paragraph> paragraphs = printedParagraphs(block);
        for (Paragraph &paragraph : paragraphs)
            layOut(&paragraph, &writer);
        findNeededLines(&paragraphs);
        Pages pages(&writer);
        if (!entries.isEmpty()) {
            writer.setTitle(entries.first().second);
            pages.drawTitlePage(entries);
        }
        pages.drawScript(paragraphs);
    }
    return buffer.data();
}
