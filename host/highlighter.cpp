// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/highlighter.h"

#include <QtGui/QTextDocument>

#include <algorithm>
#include <iterator>

namespace {

/// How a kind of paragraph is set off.
struct Ink
{
    QFnElement::Type type;
    QRgb light, dark; ///< the colour on a light and on a dark ground, 0 for that of the text
    bool bold, italic;
};

// A kind that is not here looks like any text. General is what the title page is made of.
constexpr Ink inks[] = {
    {QFnElement::Boneyard, 0xff8a8a8a, 0xff858585, false, true},
    {QFnElement::Character, 0xff9a3f0c, 0xfff0a56b, true, false},
    {QFnElement::Notes, 0xff8a6a00, 0xffe0c060, false, true},
    {QFnElement::PageBreak, 0xff8a8a8a, 0xff858585, false, false},
    {QFnElement::Parenthetical, 0xff6f6257, 0xffc4b5a5, false, true},
    {QFnElement::SceneHeading, 0xff1d4f91, 0xff8fbcf5, true, false},
    {QFnElement::SectionHeading, 0xff2a6e3a, 0xff8fd09a, true, false},
    {QFnElement::Synopsis, 0xff2a6e3a, 0xff8fd09a, false, true},
    {QFnElement::Transition, 0xff7b2d73, 0xffdc9ad4, true, false},
    {QFnElement::General, 0xff0f6d73, 0xff7fced3, false, false},
};
constexpr QRgb markInk[] = {0xffa0a0a0, 0xff787878};

// A look is a type, the emphasis above it, and this.
constexpr int emphasisShift = 8;
constexpr int isMark = 0x80;

struct LookRange
{
    int start, length; ///< in the line
    int look;
    bool operator==(const LookRange &other) const
    {
        return start == other.start && length == other.length && look == other.look;
    }
};
using LookRanges = QVector<LookRange>;

/// What a line looks like: later ranges are drawn over earlier ones.
class LineLook : public QTextBlockUserData
{
public:
    LineLook(const QString &text, const LookRanges &ranges)
        : m_text(text)
        , m_ranges(ranges)
    {}

    const LookRanges &ranges() const { return m_ranges; }

    /// Makes the ranges fit the line after a change at one place.
    void follow(const QString &text)
    {
        const auto changed =
            std::mismatch(m_text.cbegin(), m_text.cend(), text.cbegin(), text.cend());
        const int front = int(changed.first - m_text.cbegin());
        const int grown = int(text.size() - m_text.size());
        for (LookRange &range : m_ranges) {
            if (range.start > front)
                range.start = std::max(front, range.start + grown);
            else if (range.start + range.length >= front)
                range.length = std::max(front - range.start, range.length + grown);
        }
        m_text = text;
    }

private:
    QString m_text;
    LookRanges m_ranges;
};

LineLook *lookOf(const QTextBlock &block)
{
    return static_cast<LineLook *>(block.userData());
}

int lookOf(const Host::Stretch &stretch, QFnElement::Type type)
{
    return stretch.working ? stretch.working : type | stretch.emphasis << emphasisShift;
}

/// The look of each line of \a document in \a script. What belongs to no stretch is a mark.
QVector<LookRanges> looksOf(const QVector<Host::Paragraph> &script, const QTextDocument &document)
{
    QVector<LookRanges> looks(document.blockCount());
    for (const Host::Paragraph &paragraph : script) {
        QTextBlock block = document.findBlock(paragraph.start);
        for (; block.isValid() && block.position() < paragraph.end; block = block.next())
            looks[block.blockNumber()] = {{0, block.length() - 1, paragraph.type | isMark}};
        for (const Host::Stretch &stretch : paragraph.stretches) {
            const int end = stretch.start + int(stretch.text.size());
            for (int at = stretch.start; at < end;) {
                block = document.findBlock(at);
                const int next = std::min(end, block.position() + block.length());
                looks[block.blockNumber()].append(
                    {at - block.position(), next - at, lookOf(stretch, paragraph.type)});
                at = next;
            }
        }
    }
    return looks;
}

} // namespace

Host::Highlighter::Highlighter(QTextDocument *document)
    : QSyntaxHighlighter(document)
{}

void Host::Highlighter::setScript(const QVector<Paragraph> &script)
{
    const QVector<LookRanges> looks = looksOf(script, *document());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const LookRanges &ranges = looks.at(block.blockNumber());
        const LineLook *old = lookOf(block);
        if (old ? old->ranges() == ranges : ranges.isEmpty())
            continue;
        block.setUserData(new LineLook(block.text(), ranges)); // The block owns it.
        rehighlightBlock(block);
    }
}

void Host::Highlighter::setDark(bool dark)
{
    if (dark != m_dark) {
        m_dark = dark;
        rehighlight();
    }
}

void Host::Highlighter::highlightBlock(const QString &text)
{
    LineLook *look = lookOf(currentBlock());
    if (!look)
        return;
    look->follow(text);
    for (const LookRange &range : look->ranges())
        setFormat(range.start, range.length, format(range.look));
}

QTextCharFormat Host::Highlighter::format(int look) const
{
    const int type = look % isMark;
    const int emphasis = look >> emphasisShift;
    const auto found = std::find_if(std::begin(inks), std::end(inks),
                                    [type](const Ink &ink) { return ink.type == type; });
    const Ink ink = found == std::end(inks) ? Ink() : *found;
    QTextCharFormat format;
    const QRgb colour = look & isMark ? markInk[m_dark] : m_dark ? ink.dark : ink.light;
    if (colour)
        format.setForeground(QColor(colour));
    if (ink.bold || emphasis & Stretch::Bold)
        format.setFontWeight(QFont::Bold);
    format.setFontItalic(ink.italic != bool(emphasis & Stretch::Italic));
    format.setFontUnderline(emphasis & Stretch::Underline);
    return format;
}
