// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/reading.h"

#include "host/writing.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Host {
namespace {

// These stand for each letter of a note and of a comment while a script is read. Qt takes them for
// marks of its own, so they have no other use here.
constexpr QChar noteMask = u'\uFDD0';
constexpr QChar commentMask = u'\uFDD1';
constexpr QChar endOfInput = u'\uFFFF'; // to the library, wherever it stands

// The look of a letter: flags of emphasis, and the type of working material above them.
constexpr int workingShift = 3;
constexpr int noteLook = QFnElement::Notes << workingShift;
constexpr int markLook = -1; // none of the text

bool isMask(QChar c)
{
    return c == noteMask || c == commentMask;
}

bool isBlankOrMask(QChar c)
{
    return isBlank(c) || isMask(c);
}

int lookOf(QChar c)
{
    return c == noteMask ? noteLook : c == commentMask ? QFnElement::Boneyard << workingShift : 0;
}

/// The index behind the last unit of \a text that \a is does not hold of.
int endWithout(bool (*is)(QChar), QStringView text)
{
    return int(text.rend() - std::find_if_not(text.rbegin(), text.rend(), is));
}

bool isPageBreak(const QString &line)
{
    return line.startsWith("==="_L1) && line.count(u'=') == line.trimmed().size();
}

bool isCentred(const QString &line)
{
    const int end = endWithout(isBlank, line);
    return end > 1 && line.startsWith(u'>') && line.at(end - 1) == u'<';
}

/// Whether the line is in parentheses as a whole.
bool isParenthetical(const QString &line)
{
    const QString text = line.trimmed();
    int depth = 0;
    const auto end = std::find_if(text.cbegin(), text.cend(), [&depth](QChar c) {
        depth += c == u'(' ? 1 : c == u')' ? -1 : 0;
        return depth <= 0;
    });
    return text.size() > 1 && end == text.cend() - 1;
}

/// The \a source without the characters that end a block of Qt's text, or stand for an object in
/// it.
QString readable(QString source)
{
    source.replace(QChar::ParagraphSeparator, u'\n');
    for (const QChar c : {noteMask, commentMask, QChar(QChar::ObjectReplacementCharacter)})
        source.replace(c, QChar::ReplacementCharacter);
    return source;
}

/// The \a source with masks in the place of its notes and comments, marks and line ends included. A
/// note that is open at a blank line is none; a comment without an end takes the rest of the
/// script, as in the library.
QString masked(const QString &source)
{
    QString text = source;
    text.replace(endOfInput, u'-');
    const auto find = [&source](QLatin1String mark, int from) {
        const int found = int(source.indexOf(mark, from));
        return found < 0 ? int(source.size()) : found;
    };
    // What was found is kept, so that the search for each mark goes through the text once.
    int noteEnd = -1, blankLine = -1;
    for (int at = 0; at < source.size();) {
        int end = at;
        const QStringView mark = QStringView(source).mid(at, 2);
        if (mark == noteMarks.open) {
            noteEnd = noteEnd < at + 2 ? find(noteMarks.close, at + 2) : noteEnd;
            blankLine = blankLine < at ? find("\n\n"_L1, at) : blankLine;
            end = noteEnd < blankLine ? noteEnd + 2 : at;
        } else if (mark == commentMarks.open) {
            end = std::min(find(commentMarks.close, at + 2) + 2, int(source.size()));
        }
        if (end > at)
            std::fill(text.begin() + at, text.begin() + end,
                      mark == noteMarks.open ? noteMask : commentMask);
        at = std::max(at + 1, end);
    }
    return text;
}

/// A line of the source, without its line end. Line ends within a note or comment do not end it.
struct SourceLine
{
    int start, end; ///< Indexes in the source.
    int mark;       ///< Where the text begins, with the mark in front of it that tells its kind.
    int from, to;   ///< The text alone. Behind it stand marks, and the number of a scene.
    QStringView masked;
    QString visible; ///< Without notes and comments, and the blanks between one and an end.
};

/// One pass over a script.
class Reader
{
public:
    explicit Reader(const QString &source)
        : m_source(readable(source))
        , m_masked(masked(m_source))
    {}

    QVector<Paragraph> paragraphs()
    {
        for (int at = 0; at < m_source.size();) {
            const SourceLine line = lineAt(at);
            readLine(line);
            at = line.end + 1;
        }
        keepSources();
        return std::move(m_paragraphs);
    }

private:
    /// What stands above the line that is read next: nothing, the title page, the end of a block,
    /// text that ends none, action that the line may go on, a cue or a speech.
    enum Place { Top, TitlePage, BlockEnd, OtherText, OpenAction, Cue, Speech };

    SourceLine lineAt(int start) const
    {
        const int found = int(m_masked.indexOf(u'\n', start));
        const int end = found < 0 ? int(m_masked.size()) : found;
        const QStringView masked = QStringView(m_masked).mid(start, end - start);
        int from = start;
        if (!masked.isEmpty() && isMask(masked.front()))
            from +=
                int(std::find_if_not(masked.begin(), masked.end(), isBlankOrMask) - masked.begin());
        QString visible = m_masked.mid(from, end - from).remove(noteMask).remove(commentMask);
        const int last = endWithout(isBlank, masked) - 1;
        if (last >= 0 && isMask(masked.at(last)))
            visible.truncate(endWithout(isBlank, visible));
        return {start, end, from, from, end, masked, visible};
    }

    /// Whether a paragraph may end with the line: a comment between it and a blank line is no text.
    bool isBlankBelow(const SourceLine &line) const
    {
        for (int at = line.end + 1; at < m_source.size();) {
            const SourceLine below = lineAt(at);
            if (isBlank(below.masked) || !isBlank(below.visible))
                return isBlank(below.visible) || isPageBreak(below.visible);
            at = below.end + 1;
        }
        return true;
    }

    /// Whether the line starts an entry of the title page: the library makes one of it.
    bool opensTitleEntry(const SourceLine &line)
    {
        if (line.masked.isEmpty() || !line.masked.front().isLetter())
            return false;
        m_parser.parse(line.visible + "x\n\n"_L1);
        return !m_parser.document->titlePage.isEmpty();
    }

    void readLine(const SourceLine &line)
    {
        const QString &text = line.visible;
        const bool hasNothing = isBlank(line.masked);
        if (m_place == TitlePage ? !hasNothing : m_place == Top && opensTitleEntry(line))
            return readTitleLine(line);
        if (hasNothing && (m_place != Speech || line.masked.isEmpty()))
            return readBlankLine(line);
        if (!hasNothing && isBlank(text))
            return readWorkingLine(line);
        if (text.startsWith(u'!') && line.masked.size() > 1)
            return readMarkedLine(line, QFnElement::Action, OpenAction);
        if (isCentred(text))
            return readCentredLine(line);
        if (isPageBreak(text))
            return add(line, QFnElement::PageBreak, BlockEnd);
        if (m_place == Cue || m_place == Speech)
            return add(line,
                       isParenthetical(text) ? QFnElement::Parenthetical : QFnElement::Dialogue,
                       Speech);
        if (text.startsWith(u'#'))
            return readMarkedLine(line, QFnElement::SectionHeading, BlockEnd);
        if (text.startsWith(u'='))
            return readMarkedLine(line, QFnElement::Synopsis, BlockEnd);
        const bool opensBlock = m_place == Top || m_place == BlockEnd;
        const QFnElement::Type kind =
            opensBlock ? kindOf(text, isBlankBelow(line), &m_parser) : QFnElement::Action;
        if (kind == QFnElement::SceneHeading || kind == QFnElement::Transition)
            return readMarkedLine(line, kind, OtherText);
        if (kind == QFnElement::Character)
            return add(line, QFnElement::Character, Cue);
        readAction(line);
    }

    /// Reads a line of the title page, which is the first paragraph if its first line is an entry.
    void readTitleLine(const SourceLine &line)
    {
        add(line, QFnElement::General, TitlePage, !opensTitleEntry(line));
        m_paragraphs.last().titlePage = true;
    }

    /// The last of some blank lines parts two paragraphs. Each other one is a paragraph of its own.
    void readBlankLine(const SourceLine &line)
    {
        const bool parts = !m_paragraphs.isEmpty() && line.end + 1 < m_source.size()
                           && !isBlank(lineAt(line.end + 1).masked);
        m_place = m_place == Top ? Top : BlockEnd;
        if (!parts)
            add(line, QFnElement::Action, m_place);
    }

    /// Reads a line of notes and comments, which changes nothing in what stands around it. One that
    /// is a single note or comment is of that kind.
    void readWorkingLine(const SourceLine &line)
    {
        const auto mask = std::find_if(line.masked.begin(), line.masked.end(), isMask);
        const int first = int(mask - line.masked.begin());
        const KindMarks &marks = *mask == noteMask ? noteMarks : commentMarks;
        const QStringView source = QStringView(m_source).mid(line.start, line.end - line.start);
        const int close = int(source.indexOf(marks.close, first + 2));
        SourceLine text = line;
        text.mark = line.start;
        text.from = line.start + first + 2;
        text.to = close < 0 ? line.end : line.start + close;
        const bool isOne =
            text.from < text.to && (close < 0 || close + 2 == endWithout(isBlank, line.masked));
        add(isOne ? text : line, isOne ? marks.type : QFnElement::Action, m_place);
    }

    void readCentredLine(const SourceLine &line)
    {
        SourceLine text = line;
        text.to = line.start + endWithout(isBlankOrMask, line.masked) - 1;
        ++text.from;
        if (text.to - text.from > 2 && m_source.at(text.from) == u' '
            && m_source.at(text.to - 1) == u' ') {
            ++text.from;
            --text.to;
        }
        const bool hasText = !isBlank(QStringView(m_source).mid(text.from, text.to - text.from));
        readAction(hasText ? text : line, hasText);
    }

    /// Reads a line of a kind that a mark may tell. One with nothing but the mark is action.
    void readMarkedLine(const SourceLine &line, QFnElement::Type type, Place below)
    {
        const QLatin1String open = marksOf(type)->open;
        const bool repeats = type == QFnElement::SectionHeading;
        SourceLine text = line;
        while (text.from < text.to && m_source.at(text.from) == open.front()
               && (repeats || text.from == text.mark))
            ++text.from;
        const int depth = text.from - text.mark;
        if (depth > 0 && open.size() > 1 && text.from < text.to && m_source.at(text.from) == u' ')
            ++text.from;
        const QString number = type == QFnElement::SceneHeading ? takeNumber(&text) : QString();
        // A note or comment behind the mark is text enough.
        if (type != QFnElement::Action
            && isBlank(QStringView(m_source).mid(text.from, text.to - text.from)))
            return readAction(line);
        add(text, type, below);
        m_paragraphs.last().depth = repeats ? std::min(depth, deepestSection) : 0;
        m_paragraphs.last().sceneNumber = number;
    }

    /// Takes the number off the text of a heading: "4" of "INT. SEA #4#". Empty where there is
    /// none.
    QString takeNumber(SourceLine *line) const
    {
        const QStringView text = QStringView(m_masked).mid(line->from, line->to - line->from);
        const int close = endWithout(isBlankOrMask, text) - 1;
        const int open = close > 0 ? int(text.left(close).lastIndexOf(u'#')) : -1;
        const auto isInNumber = [](QChar c) {
            return c.isLetterOrNumber() || c == u'.' || c == u'-';
        };
        if (open <= 0 || close == open + 1 || text.at(close) != u'#'
            || !std::all_of(text.begin() + open + 1, text.begin() + close, isInNumber))
            return {};
        line->to = line->from + endWithout(isBlank, text.left(open));
        return m_source.mid(line->from + open + 1, close - open - 1);
    }

    void readAction(const SourceLine &line, bool centred = false)
    {
        const bool goesOn = m_place == OpenAction && m_paragraphs.last().type == QFnElement::Action
                            && m_paragraphs.last().centred == centred;
        add(line, QFnElement::Action, OpenAction, goesOn);
        m_paragraphs.last().centred = centred;
    }

    /// Adds a line, which stands above the next: as a paragraph, or to the last one if it \a
    /// goesOn.
    void add(const SourceLine &line, QFnElement::Type type, Place below, bool goesOn = false)
    {
        if (!goesOn) {
            m_paragraphs.append(Paragraph());
            m_paragraphs.last().type = type;
            m_paragraphs.last().start = line.start;
        }
        Paragraph &last = m_paragraphs.last();
        if (goesOn) // The line end is a part of no note, and looks like the text in front of it.
            last.stretches.append({QChar(QChar::LineSeparator), last.stretches.last().emphasis,
                                   QFnElement::Undefined, line.start - 1});
        addText(line);
        last.end = std::min(line.end + 1, int(m_source.size()));
        m_place = below;
    }

    /// Adds the line to the last paragraph, without its marks.
    void addText(const SourceLine &line)
    {
        const QFnElement::Type type = m_paragraphs.last().type;
        std::vector<int> looks(std::size_t(line.end - line.start));
        std::transform(line.masked.begin(), line.masked.end(), looks.begin(), lookOf);
        const auto lookAt = [&](int index) { return looks.data() + (index - line.start); };
        std::fill(lookAt(line.mark), lookAt(line.from), markLook);
        // A note behind the text stays, but for the mark that closes a paragraph of notes.
        const bool isWorking = type == QFnElement::Notes || type == QFnElement::Boneyard;
        std::replace_if(
            lookAt(line.to), lookAt(line.end), [=](int look) { return isWorking || look == 0; },
            type == QFnElement::SceneHeading ? noteLook : markLook);
        if (hasEmphasis(type))
            emphasise(m_masked.mid(line.from, line.to - line.from), lookAt(line.from));
        for (int at = line.start; at < line.end;) {
            const int start = at;
            const int look = *lookAt(start);
            while (at < line.end && *lookAt(at) == look)
                ++at;
            const QString text =
                m_source.mid(start, at - start).replace(u'\n', QChar::LineSeparator);
            if (look != markLook)
                m_paragraphs.last().stretches.append({text, look % (1 << workingShift),
                                                      QFnElement::Type(look >> workingShift),
                                                      start});
        }
    }

    /// Adds emphasis to the \a looks of the letters of \a text. Of its marks those of one kind open
    /// and close in turn, open in front of text and close behind it, with some text in between. All
    /// others are text, and so is one behind a backslash.
    void emphasise(const QString &text, int *looks)
    {
        m_parser.buffer = text;
        m_parser.initParser();
        const auto isText = [](int look) { return look != markLook; };
        int opened[std::size(emphasisMarks)] = {}; // the index behind an open mark, else 0
        while (m_parser.nextToken().kind != QFnToken::EndOfInput) {
            const int start = m_parser.tokenStart + 1;
            const int end = m_parser.position + 1;
            const auto found = std::find_if(
                std::begin(emphasisMarks), std::end(emphasisMarks),
                [&](const EmphasisMark &mark) { return mark.text == m_parser.currentToken.text; });
            if (found == std::end(emphasisMarks) || (start > 0 && text.at(start - 1) == u'\\'))
                continue;
            int &open = opened[found - std::begin(emphasisMarks)];
            if (open > 0 && std::any_of(looks + open, looks + std::max(open, start), isText)
                && !isBlank(text.at(start - 1))) {
                for (int i = open; i < start; ++i)
                    looks[i] |= found->emphasis;
                std::fill(looks + open - found->text.size(), looks + open, markLook);
                std::fill(looks + start, looks + end, markLook);
                open = 0;
            } else if (open == 0 && end < text.size() && !isBlank(text.at(end))) {
                open = end;
            }
        }
    }

    /// Gives its source to each paragraph for which that is not what would be written.
    void keepSources()
    {
        const Paragraph *above = nullptr;
        for (Paragraph &paragraph : m_paragraphs) {
            const int start = above ? above->end : 0;
            const QString source = m_source.mid(start, paragraph.end - start);
            if (written(paragraph, above) != source)
                paragraph.source = source;
            above = &paragraph;
        }
    }

    const QString m_source;
    const QString m_masked;
    QFnFastParser m_parser{nullptr};
    QVector<Paragraph> m_paragraphs;
    Place m_place = Top;
};

} // namespace

QString Paragraph::text() const
{
    QString text;
    for (const Stretch &stretch : stretches)
        text += stretch.text;
    return text;
}

bool hasEmphasis(QFnElement::Type type)
{
    return type != QFnElement::Character && type != QFnElement::SceneHeading
           && type != QFnElement::SectionHeading && type != QFnElement::Notes
           && type != QFnElement::Boneyard;
}

QVector<Paragraph> read(const QString &source)
{
    return Reader(source).paragraphs();
}

} // namespace Host
