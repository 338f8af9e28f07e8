// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/reading.h"

#include "host/marks.h"
#include "host/writing.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QPair>

#include <algorithm>
#include <iterator>

namespace Host {
namespace {

QFnElement::Type workingType(QChar mask)
{
    return mask == noteMask      ? QFnElement::Notes
           : mask == commentMask ? QFnElement::Boneyard
                                 : QFnElement::Undefined;
}

bool isPageBreak(const QString &line)
{
    return line.startsWith("==="_L1) && line.count(u'=') == line.trimmed().size();
}

/// Whether the line is in parentheses as a whole.
bool isParenthetical(const QString &line)
{
    const QString text = line.trimmed();
    int depth = 0;
    for (int i = 0; i < text.size() && (depth > 0 || i == 0); ++i) {
        depth += text.at(i) == u'(' ? 1 : text.at(i) == u')' ? -1 : 0;
        if (depth == 0)
            return i > 0 && i == text.size() - 1;
    }
    return false;
}

/// A heading as its text and its number: "INT. SEA #4#" is "INT. SEA" and "4". The number is empty
/// where there is none.
QPair<QString, QString> splitHeading(const QString &text)
{
    const QString line = masked(text);
    const int last = int(line.size()) - 1;
    const int open = line.endsWith(u'#') ? int(line.lastIndexOf(u'#', last - 1)) : -1;
    const QString number = open > 0 ? text.mid(open + 1, last - open - 1) : QString();
    const auto isInNumber = [](QChar c) { return c.isLetterOrNumber() || c == u'.' || c == u'-'; };
    if (!std::all_of(number.begin(), number.end(), isInNumber))
        return {text, QString()};
    int end = open;
    while (end > 0 && isBlank(text.at(end - 1)))
        --end;
    return {text.left(end), number};
}

/// A line of the source. Line ends within a note or comment do not end it.
struct SourceLine
{
    int start, end; ///< without its line end
    QStringView masked;
};

/// Where the text of a line stands, and where the marks on both sides of it that tell its kind.
struct Inner
{
    int mark, start, end, behind;
};

/// A mark that is no text. One of emphasis turns a flag on or off.
struct Mark
{
    int start, end, emphasis;
};

/// One pass over a script.
class Reader
{
public:
    explicit Reader(const QString &source)
        : m_source(source)
        , m_masked(masked(source))
        , m_parser(nullptr)
    {}

    QVector<Paragraph> paragraphs();

private:
    /// What stands above the line that is read next.
    enum Place { Top, TitlePage, Blank, OtherText, Action, Cue, Speech };

    SourceLine lineAt(int start) const;
    Inner innerOf(const SourceLine &line) const;
    bool isBlankBelow(const SourceLine &line) const;
    bool opensTitleEntry(const SourceLine &line);

    void readLine(const SourceLine &line);
    void readTitleLine(const SourceLine &line);
    void readBlankLine(const SourceLine &line);
    void readWorkingLine(const SourceLine &line);
    void readCentredLine(const SourceLine &line);
    void readMarkedLine(const SourceLine &line, QFnElement::Type type, Place below);
    void readAction(const SourceLine &line, const Inner &inner, bool centred = false);

    void add(const SourceLine &line, QFnElement::Type type, const Inner &inner, Place below);
    void begin(const SourceLine &line, QFnElement::Type type);
    void addText(const SourceLine &line, const Inner &inner);
    void addStretch(int start, int end, Stretch look);
    void addLineEnd(const SourceLine &line);
    void finish();
    QVector<Mark> marksOf(const Inner &inner);

    const QString &m_source;
    const QString m_masked;
    QFnFastParser m_parser;
    QVector<Paragraph> m_paragraphs;
    Place m_place = Top;
};

QVector<Paragraph> Reader::paragraphs()
{
    for (int at = 0; at < m_source.size();) {
        const SourceLine line = lineAt(at);
        readLine(line);
        at = line.end + 1;
    }
    finish();
    return std::move(m_paragraphs);
}

SourceLine Reader::lineAt(int start) const
{
    const int found = int(m_masked.indexOf(u'\n', start));
    const int end = found < 0 ? int(m_masked.size()) : found;
    return {start, end, QStringView(m_masked).mid(start, end - start)};
}

/// The line from the first letter of its visible() text to the last, without marks.
Inner Reader::innerOf(const SourceLine &line) const
{
    int start = line.start;
    int end = line.end;
    const auto isBehindMask = [&](int i) { return i > line.start && isMask(m_masked.at(i - 1)); };
    while (start < end
           && (isMask(m_masked.at(start)) || (isBehindMask(start) && isBlank(m_masked.at(start)))))
        ++start;
    while (end > start && isMask(m_masked.at(end - 1)))
        --end;
    return {start, start, end, end};
}

/// Whether a paragraph may end with the line: a comment between it and a blank line is no text.
bool Reader::isBlankBelow(const SourceLine &line) const
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
bool Reader::opensTitleEntry(const SourceLine &line)
{
    if (line.masked.isEmpty() || !line.masked.front().isLetter())
        return false;
    m_parser.parse(visible(line.masked) + "x\n\n"_L1);
    return !m_parser.document->titlePage.isEmpty();
}

void Reader::readLine(const SourceLine &line)
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
        return readMarkedLine(line, QFnElement::Action, Action);
    if (text.startsWith(u'>') && text.endsWith(u'<') && text.size() > 1)
        return readCentredLine(line);
    if (isPageBreak(text))
        return add(line, QFnElement::PageBreak, innerOf(line), Blank);
    if (m_place == Cue || m_place == Speech)
        return add(line, isParenthetical(text) ? QFnElement::Parenthetical : QFnElement::Dialogue,
                   innerOf(line), Speech);
    if (text.startsWith(u'#'))
        return readMarkedLine(line, QFnElement::SectionHeading, Blank);
    if (text.startsWith(u'='))
        return readMarkedLine(line, QFnElement::Synopsis, Blank);
    const bool opensBlock = m_place == Top || m_place == Blank;
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
void Reader::readTitleLine(const SourceLine &line)
{
    if (opensTitleEntry(line)) {
        begin(line, QFnElement::General);
        m_paragraphs.last().titlePage = true;
    } else {
        addLineEnd(line);
    }
    addText(line, innerOf(line));
    m_place = TitlePage;
}

/// The last of some blank lines parts two paragraphs. Each other one is a paragraph of its own.
void Reader::readBlankLine(const SourceLine &line)
{
    const bool parts = !m_paragraphs.isEmpty() && line.end + 1 < m_source.size()
                       && !isBlank(lineAt(line.end + 1).masked);
    if (!parts)
        add(line, QFnElement::Action, innerOf(line), m_place);
    m_place = m_place == Top ? Top : Blank;
}

/// Reads a line of notes and comments, which changes nothing in what stands around it.
void Reader::readWorkingLine(const SourceLine &line)
{
    const bool isNote = line.masked.front() == noteMask;
    const int start = line.start + 2;
    const int found = int(m_source.indexOf(isNote ? noteClose : commentClose, start));
    const int end = found < 0 ? line.end : found;
    const bool isOne = isMask(line.masked.front()) && (found < 0 || found + 2 == line.end);
    if (isOne && start < end) {
        begin(line, isNote ? QFnElement::Notes : QFnElement::Boneyard);
        addStretch(start, end, Stretch());
        m_paragraphs.last().end = std::min(line.end + 1, int(m_source.size()));
    } else {
        begin(line, QFnElement::Action);
        addText(line, innerOf(line));
    }
    if (m_place == Action)
        m_place = OtherText; // what follows begins a paragraph
    else if (m_place == Top)
        m_place = Blank; // no title page follows
}

void Reader::readCentredLine(const SourceLine &line)
{
    Inner inner = innerOf(line);
    ++inner.start;
    --inner.end;
    if (inner.end - inner.start > 2 && m_source.at(inner.start) == u' '
        && m_source.at(inner.end - 1) == u' ') {
        ++inner.start;
        --inner.end;
    }
    if (isBlank(QStringView(m_source).mid(inner.start, inner.end - inner.start)))
        return readAction(line, innerOf(line));
    readAction(line, inner, true);
}

/// Reads a line of a kind that a mark may tell. One with nothing but the mark is action.
void Reader::readMarkedLine(const SourceLine &line, QFnElement::Type type, Place below)
{
    const KindMark &mark = *kindMarkOf(type);
    Inner inner = innerOf(line);
    while (inner.start < inner.end && m_source.at(inner.start) == mark.mark
           && (mark.repeats || inner.start == inner.mark))
        ++inner.start;
    const int depth = inner.start - inner.mark;
    if (depth > 0 && mark.takesBlank && inner.start < inner.end && m_source.at(inner.start) == u' ')
        ++inner.start;
    const auto heading = splitHeading(m_source.mid(inner.start, line.end - inner.start));
    if (type == QFnElement::SceneHeading && !heading.second.isEmpty())
        inner.end = inner.start + int(heading.first.size());
    const bool hasText =
        type == QFnElement::Action || inner.behind < line.end
        || !isBlank(QStringView(m_source).mid(inner.start, inner.end - inner.start));
    if (!hasText)
        return readAction(line, innerOf(line));
    add(line, type, inner, below);
    m_paragraphs.last().depth = mark.repeats ? depth : 0;
    if (type == QFnElement::SceneHeading)
        m_paragraphs.last().sceneNumber = heading.second;
}

void Reader::readAction(const SourceLine &line, const Inner &inner, bool centred)
{
    if (m_place == Action && m_paragraphs.last().centred == centred) {
        addLineEnd(line);
    } else {
        begin(line, QFnElement::Action);
        m_paragraphs.last().centred = centred;
    }
    addText(line, inner);
    m_place = Action;
}

/// Adds a paragraph of one line, which stands above the next.
void Reader::add(const SourceLine &line, QFnElement::Type type, const Inner &inner, Place below)
{
    begin(line, type);
    addText(line, inner);
    m_place = below;
}

void Reader::begin(const SourceLine &line, QFnElement::Type type)
{
    finish();
    Paragraph paragraph;
    paragraph.type = type;
    paragraph.start = line.start;
    m_paragraphs.append(paragraph);
}

/// Adds a line to the last paragraph, without its marks.
void Reader::addText(const SourceLine &line, const Inner &inner)
{
    const QVector<Mark> marks = marksOf(inner);
    auto mark = marks.cbegin();
    Stretch look;
    for (int at = line.start; at < line.end;) {
        if (mark != marks.cend() && at == mark->start) {
            look.emphasis ^= mark->emphasis;
            at = (mark++)->end;
            continue;
        }
        const int start = at;
        const int end = mark == marks.cend() ? line.end : mark->start;
        look.working = workingType(m_masked.at(at));
        while (at < end && workingType(m_masked.at(at)) == look.working)
            ++at;
        addStretch(start, at, look);
    }
    if (line.start == line.end)
        addStretch(line.start, line.end, look);
    m_paragraphs.last().end = std::min(line.end + 1, int(m_source.size()));
}

/// The marks on both sides of a text, and the marks of emphasis in it that pair up: those of one
/// kind open and close in turn, open in front of text and close behind it. All others are text.
QVector<Mark> Reader::marksOf(const Inner &inner)
{
    QVector<Mark> marks;
    if (inner.mark < inner.start)
        marks.append({inner.mark, inner.start, 0});
    const QString text = m_masked.mid(inner.start, inner.end - inner.start);
    const bool mayHaveEmphasis =
        hasEmphasis(m_paragraphs.last().type) && (text.contains(u'*') || text.contains(u'_'));
    m_parser.buffer = mayHaveEmphasis ? text : QString();
    m_parser.initParser();
    Mark open[std::size(emphasisMarks)] = {};
    while (m_parser.nextToken().kind != QFnToken::EndOfInput) {
        const auto found = std::find_if(
            std::begin(emphasisMarks), std::end(emphasisMarks),
            [&](const EmphasisMark &mark) { return mark.text == m_parser.currentToken.text; });
        if (found == std::end(emphasisMarks))
            continue;
        const int start = m_parser.tokenStart + 1;
        const int end = m_parser.position + 1;
        const Mark mark{inner.start + start, inner.start + end, found->emphasis};
        Mark &opened = open[found - std::begin(emphasisMarks)];
        const bool isBehindText = start > 0 && !isBlank(text.at(start - 1));
        if (opened.emphasis && opened.end < mark.start && isBehindText) {
            marks << opened << mark;
            opened.emphasis = 0;
        } else if (!opened.emphasis && end < text.size() && !isBlank(text.at(end))) {
            opened = mark;
        }
    }
    if (inner.end < inner.behind)
        marks.append({inner.end, inner.behind, 0});
    std::sort(marks.begin(), marks.end(),
              [](const Mark &a, const Mark &b) { return a.start < b.start; });
    return marks;
}

void Reader::addStretch(int start, int end, Stretch look)
{
    look.text = m_source.mid(start, end - start).replace(u'\n', QChar(QChar::LineSeparator));
    look.start = start;
    m_paragraphs.last().stretches.append(look);
}

/// Adds the line end in front of the line to the last paragraph. It is never a part of a note.
void Reader::addLineEnd(const SourceLine &line)
{
    Stretch look = m_paragraphs.last().stretches.last();
    look.working = QFnElement::Undefined;
    addStretch(line.start - 1, line.start, look);
}

/// Ends the last paragraph, which keeps its source only if that is not what would be written.
void Reader::finish()
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
