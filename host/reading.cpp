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

/// The \a source without the characters that end a block of Qt's text, or stand for an object in
/// it.
QString readable(QString source)
{
    source.replace(QChar::ParagraphSeparator, u'\n');
    for (const QChar c : {noteMask, commentMask, QChar(QChar::ObjectReplacementCharacter)})
        source.replace(c, QChar::ReplacementCharacter);
    return source;
}

bool isMask(QChar c)
{
    return c == noteMask || c == commentMask;
}

/// The \a source with masks in the place of its notes and comments, marks and line ends included. A
/// note that is open at a blank line is none; a comment without an end takes the rest of the
/// script, as in the library.
QString masked(const QString &source)
{
    QString text = source;
    const int size = int(text.size());
    text.replace(endOfInput, u'-');
    // What was found is kept, so that the search for each mark goes through the text once.
    const auto find = [&](QLatin1String mark, int from, int *found) {
        if (*found < from) {
            const int index = int(source.indexOf(mark, from));
            *found = index < 0 ? size : index;
        }
        return *found;
    };
    int notes = -1, noteEnds = -1, comments = -1, commentEnds = -1, blankLines = -1;
    for (int at = 0; at < size;) {
        const int note = find(noteOpen, at, &notes);
        const int comment = find(commentOpen, at, &comments);
        const bool isNote = note < comment;
        const int start = std::min(note, comment);
        at = std::min(size, start + 2);
        const int close =
            isNote ? find(noteClose, at, &noteEnds) : find(commentClose, at, &commentEnds);
        if (isNote && close >= find("\n\n"_L1, start, &blankLines))
            continue;
        at = std::min(size, close + 2);
        std::fill(text.begin() + start, text.begin() + at, isNote ? noteMask : commentMask);
    }
    return text;
}

bool isBlankOrMask(QChar c)
{
    return isBlank(c) || isMask(c);
}

/// The index behind the last unit of \a text that \a is does not hold of.
int endWithout(bool (*is)(QChar), QStringView text)
{
    return int(text.rend() - std::find_if_not(text.rbegin(), text.rend(), is));
}

/// A masked \a line without its notes and comments: no blank stands beside one at an end of the
/// line, and one blank where two would meet around them.
QString visible(QStringView line)
{
    QString text;
    for (int i = 0; i < line.size(); ++i) {
        const bool isBesideBlank =
            i > 0 && isMask(line.at(i - 1)) && (text.isEmpty() || isBlank(text.back()));
        if (!isMask(line.at(i)) && !(isBesideBlank && isBlank(line.at(i))))
            text += line.at(i);
    }
    const int end = endWithout(isBlank, line);
    if (end > 0 && isMask(line.at(end - 1)))
        text.truncate(endWithout(isBlank, text));
    return text;
}

// The look of a letter: flags of emphasis, and what it is beside that.
constexpr char emphasisFlags = Stretch::Underline | Stretch::Italic | Stretch::Bold;
constexpr char markLook = 0x08; // none of the text
constexpr char noteLook = 0x10;
constexpr char commentLook = 0x20;

char lookOf(QChar c)
{
    return c == noteMask ? noteLook : c == commentMask ? commentLook : char(0);
}

QFnElement::Type workingType(char look)
{
    return look & noteLook      ? QFnElement::Notes
           : look & commentLook ? QFnElement::Boneyard
                                : QFnElement::Undefined;
}

bool isPageBreak(const QString &line)
{
    return line.startsWith("==="_L1) && line.count(u'=') == line.trimmed().size();
}

bool isCentred(const QString &line)
{
    const QString text = line.trimmed();
    return line.startsWith(u'>') && text.endsWith(u'<') && text.size() > 1;
}

/// Whether the line is in parentheses as a whole.
bool isParenthetical(const QString &line)
{
    const QString text = line.trimmed();
    int depth = 0;
    for (int i = 0; i < text.size(); ++i) {
        depth += text.at(i) == u'(' ? 1 : text.at(i) == u')' ? -1 : 0;
        if (depth <= 0)
            return i > 0 && i == text.size() - 1;
    }
    return false;
}

/// A line of the source. Line ends within a note or comment do not end it.
struct SourceLine
{
    int start, end; ///< without its line end
    QStringView masked;
};

/// A line without the notes and comments at its front. Around its text stand the marks that tell
/// its kind; behind the text of a heading stands its number.
struct Inner
{
    int mark, start, end, behind; ///< The text is from start to end.
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
        finish();
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
        return {start, end, maskedFrom(start, end)};
    }

    /// The line from the first letter of its visible() text on, without marks.
    Inner innerOf(const SourceLine &line) const
    {
        int start = line.start;
        const auto isBehindMask = [&](int i) {
            return i > line.start && isMask(m_masked.at(i - 1));
        };
        while (
            start < line.end
            && (isMask(m_masked.at(start)) || (isBehindMask(start) && isBlank(m_masked.at(start)))))
            ++start;
        return {start, start, line.end, line.end};
    }

    QStringView textOf(const Inner &inner) const
    {
        return QStringView(m_source).mid(inner.start, inner.end - inner.start);
    }

    QStringView maskedFrom(int start, int end) const
    {
        return QStringView(m_masked).mid(start, end - start);
    }

    /// Ends the text at \a end. What stands behind it, up to a note or comment, is a mark.
    void endText(int end, Inner *inner) const
    {
        const auto mask =
            std::find_if(m_masked.cbegin() + end, m_masked.cbegin() + inner->end, isMask);
        inner->behind = int(mask - m_masked.cbegin());
        inner->end = end;
    }

    /// Takes the number off the text of a heading: "4" of "INT. SEA #4#". Empty where there is
    /// none.
    QString takeNumber(Inner *inner) const
    {
        const QStringView text = maskedFrom(inner->start, inner->end);
        const int close = endWithout(isBlankOrMask, text) - 1;
        const int open = close > 0 ? int(text.left(close).lastIndexOf(u'#')) : -1;
        if (open <= 0 || text.at(close) != u'#')
            return {};
        QString number = text.mid(open + 1, close - open - 1).toString();
        const auto isInNumber = [](QChar c) {
            return c.isLetterOrNumber() || c == u'.' || c == u'-';
        };
        if (number.isEmpty() || !std::all_of(number.cbegin(), number.cend(), isInNumber))
            return {};
        endText(inner->start + endWithout(isBlank, text.left(open)), inner);
        return number;
    }

    /// Whether a paragraph may end with the line: a comment between it and a blank line is no text.
    bool isBlankBelow(const SourceLine &line) const
    {
        for (int at = line.end + 1; at < m_source.size();) {
            const SourceLine below = lineAt(at);
            const QString text = visible(below.masked);
            if (isBlank(below.masked) || !isBlank(text))
                return isBlank(text) || isPageBreak(text);
            at = below.end + 1;
        }
        return true;
    }

    /// Whether the line starts an entry of the title page: the library makes one of it.
    bool opensTitleEntry(const SourceLine &line)
    {
        if (line.masked.isEmpty() || !line.masked.front().isLetter())
            return false;
        m_parser.parse(visible(line.masked) + "x\n\n"_L1);
        return !m_parser.document->titlePage.isEmpty();
    }

    void readLine(const SourceLine &line)
    {
        const QString text = visible(line.masked);
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
            return add(line, QFnElement::PageBreak, innerOf(line), BlockEnd);
        if (m_place == Cue || m_place == Speech)
            return add(line,
                       isParenthetical(text) ? QFnElement::Parenthetical : QFnElement::Dialogue,
                       innerOf(line), Speech);
        if (text.startsWith(u'#'))
            return readMarkedLine(line, QFnElement::SectionHeading, BlockEnd);
        if (text.startsWith(u'='))
            return readMarkedLine(line, QFnElement::Synopsis, BlockEnd);
        const bool opensBlock = m_place == Top || m_place == BlockEnd;
        switch (opensBlock ? kindOf(text, isBlankBelow(line), &m_parser) : QFnElement::Action) {
        case QFnElement::SceneHeading:
            return readMarkedLine(line, QFnElement::SceneHeading, OtherText);
        case QFnElement::Transition:
            return readMarkedLine(line, QFnElement::Transition, OtherText);
        case QFnElement::Character:
            return add(line, QFnElement::Character, innerOf(line), Cue);
        default:
            return readAction(line, innerOf(line));
        }
    }

    /// Reads a line of the title page, which is the first paragraph if its first line is an entry.
    void readTitleLine(const SourceLine &line)
    {
        add(line, QFnElement::General, innerOf(line), TitlePage, !opensTitleEntry(line));
        m_paragraphs.last().titlePage = true;
    }

    /// The last of some blank lines parts two paragraphs. Each other one is a paragraph of its own.
    void readBlankLine(const SourceLine &line)
    {
        const bool parts = !m_paragraphs.isEmpty() && line.end + 1 < m_source.size()
                           && !isBlank(lineAt(line.end + 1).masked);
        const Place below = m_place == Top ? Top : BlockEnd;
        if (!parts)
            add(line, QFnElement::Action, innerOf(line), below);
        m_place = below;
    }

    /// Reads a line of notes and comments, which changes nothing in what stands around it.
    void readWorkingLine(const SourceLine &line)
    {
        const bool isNote = line.masked.front() == noteMask;
        const QStringView text = QStringView(m_source).mid(line.start, line.end - line.start);
        const int found = int(text.indexOf(isNote ? noteClose : commentClose, 2));
        const int end = found < 0 ? line.end : line.start + found;
        const bool isOne = isMask(line.masked.front()) && (found < 0 || end + 2 == line.end);
        const Place below = m_place == OpenAction ? OtherText // What follows begins a paragraph.
                            : m_place == Top      ? BlockEnd  // No title page follows.
                                                  : m_place;
        if (isOne && line.start + 2 < end)
            add(line, isNote ? QFnElement::Notes : QFnElement::Boneyard,
                {line.start, line.start + 2, end, line.end}, below);
        else
            add(line, QFnElement::Action, innerOf(line), below);
    }

    void readCentredLine(const SourceLine &line)
    {
        Inner inner = innerOf(line);
        int end = inner.start + endWithout(isBlankOrMask, maskedFrom(inner.start, inner.end)) - 1;
        ++inner.start;
        if (end - inner.start > 2 && m_source.at(inner.start) == u' '
            && m_source.at(end - 1) == u' ') {
            ++inner.start;
            --end;
        }
        endText(end, &inner);
        const bool hasText = !isBlank(textOf(inner));
        readAction(line, hasText ? inner : innerOf(line), hasText);
    }

    /// Reads a line of a kind that a mark may tell. One with nothing but the mark is action.
    void readMarkedLine(const SourceLine &line, QFnElement::Type type, Place below)
    {
        const KindMark &mark = *kindMarkOf(type);
        Inner inner = innerOf(line);
        while (inner.start < inner.end && m_source.at(inner.start) == mark.mark
               && (mark.repeats || inner.start == inner.mark))
            ++inner.start;
        const int depth = inner.start - inner.mark;
        if (depth > 0 && mark.takesBlank && inner.start < inner.end
            && m_source.at(inner.start) == u' ')
            ++inner.start;
        const QString number = type == QFnElement::SceneHeading ? takeNumber(&inner) : QString();
        // A note or comment behind the mark is text enough.
        if (type != QFnElement::Action && isBlank(textOf(inner)))
            return readAction(line, innerOf(line));
        add(line, type, inner, below);
        m_paragraphs.last().depth = mark.repeats ? depth : 0;
        m_paragraphs.last().sceneNumber = number;
    }

    void readAction(const SourceLine &line, const Inner &inner, bool centred = false)
    {
        const bool goesOn = m_place == OpenAction && m_paragraphs.last().centred == centred;
        add(line, QFnElement::Action, inner, OpenAction, goesOn);
        m_paragraphs.last().centred = centred;
    }

    /// Adds a line, which stands above the next: as a paragraph, or to the last one if it \a
    /// goesOn.
    void add(const SourceLine &line, QFnElement::Type type, const Inner &inner, Place below,
             bool goesOn = false)
    {
        if (goesOn) {
            // The line end is a part of no note, and looks like the text in front of it.
            QVector<Stretch> &stretches = m_paragraphs.last().stretches;
            stretches.append({QChar(QChar::LineSeparator), stretches.last().emphasis,
                              QFnElement::Undefined, line.start - 1});
        } else {
            finish();
            m_paragraphs.append(Paragraph());
            m_paragraphs.last().type = type;
            m_paragraphs.last().start = line.start;
        }
        addText(line, inner);
        m_paragraphs.last().end = std::min(line.end + 1, int(m_source.size()));
        m_place = below;
    }

    /// Adds the line to the last paragraph, without its marks.
    void addText(const SourceLine &line, const Inner &inner)
    {
        const QFnElement::Type type = m_paragraphs.last().type;
        std::vector<char> looks(std::size_t(line.end - line.start));
        std::transform(line.masked.begin(), line.masked.end(), looks.begin(), lookOf);
        const auto lookAt = [&](int index) { return looks.data() + (index - line.start); };
        std::fill(lookAt(inner.mark), lookAt(inner.start), markLook);
        std::fill(lookAt(inner.end), lookAt(inner.behind),
                  type == QFnElement::SceneHeading ? noteLook : markLook);
        if (hasEmphasis(type))
            emphasise(m_masked.mid(inner.start, inner.end - inner.start), lookAt(inner.start));
        for (int at = line.start; at < line.end;) {
            const int start = at;
            const char look = *lookAt(start);
            while (at < line.end && *lookAt(at) == look)
                ++at;
            const QString text =
                m_source.mid(start, at - start).replace(u'\n', QChar::LineSeparator);
            if (!(look & markLook))
                m_paragraphs.last().stretches.append(
                    {text, look & emphasisFlags, workingType(look), start});
        }
    }

    /// Ends the last paragraph, which keeps its source only if that is not what would be written.
    void finish()
    {
        if (m_paragraphs.isEmpty())
            return;
        Paragraph &last = m_paragraphs.last();
        const Paragraph *above = m_paragraphs.size() > 1 ? &last - 1 : nullptr;
        const int start = above ? above->end : 0;
        const QString source = m_source.mid(start, last.end - start);
        if (written(last, above, Form::Customary) != source)
            last.source = source;
    }

    /// Adds emphasis to the \a looks of the letters of \a text. Of its marks those of one kind open
    /// and close in turn, open in front of text and close behind it. All others are text, and so is
    /// one behind a backslash.
    void emphasise(const QString &text, char *looks)
    {
        if (!text.contains(u'*') && !text.contains(u'_'))
            return;
        m_parser.buffer = text;
        m_parser.initParser();
        int opened[std::size(emphasisMarks)] = {}; // the index behind an open mark, else 0
        while (m_parser.nextToken().kind != QFnToken::EndOfInput) {
            const auto found = std::find_if(
                std::begin(emphasisMarks), std::end(emphasisMarks),
                [&](const EmphasisMark &mark) { return mark.text == m_parser.currentToken.text; });
            if (found == std::end(emphasisMarks))
                continue;
            const int start = m_parser.tokenStart + 1;
            if (start > 0 && text.at(start - 1) == u'\\')
                continue;
            const int end = m_parser.position + 1;
            int &open = opened[found - std::begin(emphasisMarks)];
            if (open > 0 && open < start && !isBlank(text.at(start - 1))) {
                std::fill(looks + open - found->text.size(), looks + open, markLook);
                std::fill(looks + start, looks + end, markLook);
                std::for_each(looks + open, looks + start,
                              [&](char &look) { look = char(look | found->emphasis); });
                open = 0;
            } else if (open == 0 && end < text.size() && !isBlank(text.at(end))) {
                open = end;
            }
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
