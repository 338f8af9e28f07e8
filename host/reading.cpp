// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/reading.h"

#include "model/literals_p.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

#include <algorithm>
#include <iterator>

namespace {

using Host::Form;
using Host::Paragraph;
using Host::Stretch;
using Zem::operator""_L1;

constexpr QLatin1String noteOpen = "[["_L1;
constexpr QLatin1String noteClose = "]]"_L1;
constexpr QLatin1String commentOpen = "/*"_L1;
constexpr QLatin1String commentClose = "*/"_L1;
constexpr QLatin1String pageBreakMark = "==="_L1;
constexpr QChar lineEnd = QLatin1Char('\n');
constexpr QLatin1String emphasis[] = {"_"_L1, "*"_L1, "**"_L1}; // in the order of opening

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

bool isBlank(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return isBlank(c); });
}

/// A note or comment in the source, its marks included.
struct Span
{
    int start, end;
    Stretch::Kind kind;
};

/// Finds a mark from ever later places. What was found is remembered, so that all calls together
/// go through the text once.
class Finder
{
public:
    Finder(const QString &text, QLatin1String mark)
        : m_text(text)
        , m_mark(mark)
    {}

    /// The index of the first mark from \a from on, or the size of the text.
    int next(int from)
    {
        if (m_found < from) {
            m_found = int(m_text.indexOf(m_mark, from));
            if (m_found < 0)
                m_found = int(m_text.size());
        }
        return m_found;
    }

private:
    const QString &m_text;
    QLatin1String m_mark;
    int m_found = -1;
};

/// The notes and comments of a script. A note ends in front of a blank line if it has no closing
/// mark, and is none then; a comment without one takes the rest of the script, as in the library.
QVector<Span> findSpans(const QString &source)
{
    QVector<Span> spans;
    Finder notes(source, noteOpen);
    Finder noteEnds(source, noteClose);
    Finder comments(source, commentOpen);
    Finder commentEnds(source, commentClose);
    Finder blankLines(source, "\n\n"_L1);
    const int size = int(source.size());
    for (int at = 0; at < size;) {
        const int note = notes.next(at);
        const int comment = comments.next(at);
        if (comment < note) {
            const int close = commentEnds.next(comment + 2);
            at = std::min(close + 2, size);
            spans.append({comment, at, Stretch::Comment});
        } else if (note < size) {
            const int close = noteEnds.next(note + 2);
            const bool closed = close < size && close < blankLines.next(note);
            at = closed ? close + 2 : note + 2;
            if (closed)
                spans.append({note, at, Stretch::Note});
        } else {
            break;
        }
    }
    return spans;
}

/// A line of the source. SourceLine ends within a note or comment do not end it.
struct SourceLine
{
    int start, end;           ///< without its line end
    int firstSpan, spanCount; ///< its notes and comments
    int number, count;        ///< the first of its lines in the source, and how many it has
    enum { Blank, Working, Text } content = Blank; ///< Working: notes and comments alone
};

/// What the library takes a line for that opens a block, with a blank line or with text below it.
QFnElement::Type kindOf(QString text, bool blankBelow, QFnFastParser *parser)
{
    // The library takes the key of a title page in any line, and U+FFFF for the end of the text.
    parser->buffer = text;
    parser->initParser();
    if (QFnFastParser::isTitlePageKey(parser->nextToken().text.toUpper()))
        text[0] = text.at(0).isUpper() ? QLatin1Char('X') : QLatin1Char('x');
    text.replace(QChar(0xffff), QLatin1Char('-'));
    parser->parse(text + (blankBelow ? "\n\n"_L1 : "\nx\n"_L1));
    return parser->document->elements.first()->type;
}

/// What a mark of emphasis stands for: 0 underlined, 1 italic, 2 bold, -1 if the text is none.
int styleOf(const QString &mark)
{
    const auto found = std::find(std::begin(emphasis), std::end(emphasis), mark);
    return found == std::end(emphasis) ? -1 : int(found - std::begin(emphasis));
}

/// Whether the text is in parentheses as a whole.
bool isParenthetical(const QString &text)
{
    const QString inner = text.trimmed();
    int depth = 0;
    for (int i = 0; i < inner.size(); ++i) {
        if (inner.at(i) == QLatin1Char('('))
            ++depth;
        else if (inner.at(i) == QLatin1Char(')'))
            --depth;
        if (depth <= 0)
            return i > 0 && i == inner.size() - 1 && depth == 0;
    }
    return false;
}

/// One pass over a script.
class Reader
{
public:
    explicit Reader(const QString &source)
        : m_source(source)
        , m_spans(findSpans(source))
        , m_parser(nullptr)
    {
        cutLines();
    }

    QVector<Paragraph> paragraphs();

private:
    enum Speech { NoSpeech, BelowCue, InSpeech };

    void cutLines();
    QString visibleText(const SourceLine &line) const;
    bool isPageBreak(const SourceLine &line) const;
    bool endsInSpan(const SourceLine &line) const;
    bool blankBelow(int index) const;
    bool isTitleEntry(const SourceLine &line);

    void readTitlePage();
    void readLine(int index);
    void readBlankLine(int index);
    void readWorkingLine(const SourceLine &line);
    void readSpeech(const SourceLine &line);
    void readOutlineLine(const SourceLine &line);
    void readHeading(const SourceLine &line);
    void readTransition(const SourceLine &line);
    void readCentredLine(const SourceLine &line);
    void readAction(const SourceLine &line, int start, int end, bool centred);

    void begin(const SourceLine &line, QFnElement::Type type);
    void addLine(const SourceLine &line, QFnElement::Type type, int start, int end);
    void addText(const SourceLine &line, int start, int end);
    void endLine(const SourceLine &line);
    void addStretch(int start, int end, Stretch look);
    void finish();
    QVector<Span> emphasisMarks(const SourceLine &line, int start, int end);

    const QString &m_source;
    QVector<Span> m_spans;
    QVector<SourceLine> m_lines;
    QVector<Paragraph> m_paragraphs;
    QFnFastParser m_parser;
    int m_sliceStart = 0; ///< where the part of the source begins that the last paragraph has
    int m_sliceEnd = 0;
    int m_next = 0; ///< the line that is read next
    bool m_opensBlock = true;
    bool m_joins = false; ///< whether another line of action belongs to the last paragraph
    Speech m_speech = NoSpeech;
};

void Reader::cutLines()
{
    int span = 0;
    int number = 0;
    const int size = int(m_source.size());
    for (int start = 0; start < size;) {
        SourceLine line{start, start, span, 0, number, 1};
        int at = start;
        bool hasText = false;
        while (at < size && m_source.at(at) != lineEnd) {
            if (span < m_spans.size() && m_spans.at(span).start == at) {
                const Span &inLine = m_spans.at(span++);
                line.count +=
                    int(std::count(m_source.begin() + at, m_source.begin() + inLine.end, lineEnd));
                at = inLine.end;
            } else {
                hasText = hasText || !isBlank(m_source.at(at));
                ++at;
            }
        }
        line.end = at;
        line.spanCount = span - line.firstSpan;
        if (at == size && m_source.at(at - 1) == lineEnd)
            --line.count; // a comment that is never closed has the last line end too
        line.content = hasText              ? SourceLine::Text
                       : line.spanCount > 0 ? SourceLine::Working
                                            : SourceLine::Blank;
        number += line.count;
        m_lines.append(line);
        start = at + 1;
    }
}

/// The line without its notes and comments, with one blank where two would meet around them and
/// with none where one in front of the line leaves it.
QString Reader::visibleText(const SourceLine &line) const
{
    QString text;
    int at = line.start;
    const auto append = [&](int end) {
        const bool afterBlank = text.isEmpty() ? at > line.start : isBlank(text.back());
        if (afterBlank && at < end && isBlank(m_source.at(at)))
            ++at;
        text += QStringView(m_source).mid(at, std::max(0, end - at)).toString();
    };
    for (int i = line.firstSpan; i < line.firstSpan + line.spanCount; ++i) {
        append(m_spans.at(i).start);
        at = m_spans.at(i).end;
    }
    append(line.end);
    return text;
}

bool Reader::isPageBreak(const SourceLine &line) const
{
    const bool mayBe = m_source.at(line.start) == QLatin1Char('=') || line.spanCount > 0;
    if (line.content != SourceLine::Text || !mayBe)
        return false;
    const QString text = visibleText(line).trimmed();
    return text.startsWith(pageBreakMark) && text.count(QLatin1Char('=')) == text.size();
}

/// Whether a paragraph may end with the line: a comment between it and a blank line is no text.
bool Reader::blankBelow(int index) const
{
    for (++index; index < m_lines.size(); ++index) {
        if (m_lines.at(index).content != SourceLine::Working)
            return m_lines.at(index).content == SourceLine::Blank || isPageBreak(m_lines.at(index));
    }
    return true;
}

bool Reader::endsInSpan(const SourceLine &line) const
{
    return line.spanCount > 0 && m_spans.at(line.firstSpan + line.spanCount - 1).end >= line.end;
}

/// Whether the line starts an entry of the title page: the library makes one of it.
bool Reader::isTitleEntry(const SourceLine &line)
{
    if (!m_source.at(line.start).isLetter())
        return false;
    m_parser.parse(visibleText(line) + "x\n\n"_L1);
    return !m_parser.document->titlePage.isEmpty();
}

QVector<Paragraph> Reader::paragraphs()
{
    while (m_next < m_lines.size() && m_lines.at(m_next).content == SourceLine::Blank)
        readBlankLine(m_next++);
    readTitlePage();
    while (m_next < m_lines.size())
        readLine(m_next++);
    finish();
    return std::move(m_paragraphs);
}

/// Reads the title page: the first paragraph, if its first line is an entry.
void Reader::readTitlePage()
{
    if (m_next == m_lines.size() || !isTitleEntry(m_lines.at(m_next)))
        return;
    for (; m_next < m_lines.size() && m_lines.at(m_next).content != SourceLine::Blank; ++m_next) {
        const SourceLine &line = m_lines.at(m_next);
        if (isTitleEntry(line)) {
            begin(line, QFnElement::General);
            m_paragraphs.last().titlePage = true;
        } else {
            m_paragraphs.last().stretches.last().text += QChar(QChar::LineSeparator);
        }
        addText(line, line.start, line.end);
    }
}

void Reader::readLine(int index)
{
    const SourceLine &line = m_lines.at(index);
    const bool isBlankInSpeech = line.start < line.end && m_speech == InSpeech;
    if (line.content == SourceLine::Blank && !isBlankInSpeech)
        return readBlankLine(index);
    if (line.content == SourceLine::Working)
        return readWorkingLine(line);
    const QChar first = m_source.at(line.start);
    const bool isLong = line.end - line.start > 1;
    if (first == QLatin1Char('!') && isLong) {
        m_joins = false;
        return readAction(line, line.start + 1, line.end, false);
    }
    if (first == QLatin1Char('>') && m_source.at(line.end - 1) == QLatin1Char('<') && isLong
        && !endsInSpan(line))
        return readCentredLine(line);
    if (isPageBreak(line)) {
        addLine(line, QFnElement::PageBreak, line.start, line.end);
        m_opensBlock = true;
        return;
    }
    if (!m_opensBlock && m_speech != NoSpeech)
        return readSpeech(line);
    if (first == QLatin1Char('#') || first == QLatin1Char('='))
        return readOutlineLine(line);
    const QFnElement::Type kind =
        m_opensBlock ? kindOf(visibleText(line), blankBelow(index), &m_parser) : QFnElement::Action;
    if (kind == QFnElement::SceneHeading)
        return readHeading(line);
    if (kind == QFnElement::Transition)
        return readTransition(line);
    if (kind != QFnElement::Character)
        return readAction(line, line.start, line.end, false);
    addLine(line, kind, line.start, line.end);
    m_speech = BelowCue;
}

/// The last of some blank lines parts two paragraphs. Each other one is a paragraph of its own.
void Reader::readBlankLine(int index)
{
    const SourceLine &line = m_lines.at(index);
    const bool parts = !m_paragraphs.isEmpty() && index + 1 < m_lines.size()
                       && m_lines.at(index + 1).content != SourceLine::Blank;
    if (!parts)
        addLine(line, QFnElement::Action, line.start, line.end);
    m_opensBlock = true;
    m_joins = false;
    m_speech = NoSpeech;
}

/// Reads a line of notes and comments, which changes nothing in what stands around it.
void Reader::readWorkingLine(const SourceLine &line)
{
    const Span &span = m_spans.at(line.firstSpan);
    const bool isWhole = line.spanCount == 1 && span.start == line.start && span.end == line.end;
    const bool isClosed =
        span.kind == Stretch::Note || m_source.mid(span.end - 2, 2) == commentClose;
    if (!isWhole || span.end - span.start <= 4) {
        begin(line, QFnElement::Action);
        return addText(line, line.start, line.end);
    }
    begin(line, span.kind == Stretch::Note ? QFnElement::Notes : QFnElement::Boneyard);
    addStretch(span.start + 2, isClosed ? span.end - 2 : span.end, Stretch());
    endLine(line);
}

void Reader::readSpeech(const SourceLine &line)
{
    const QString text = visibleText(line);
    addLine(line, isParenthetical(text) ? QFnElement::Parenthetical : QFnElement::Dialogue,
            line.start, line.end);
    m_speech = InSpeech;
}

/// Reads a line with "#" or "=", which is a paragraph of its own wherever it stands outside a
/// speech.
void Reader::readOutlineLine(const SourceLine &line)
{
    const QChar mark = m_source.at(line.start);
    const bool isSection = mark == QLatin1Char('#');
    int start = line.start + 1;
    while (isSection && start < line.end && m_source.at(start) == mark)
        ++start;
    const int depth = start - line.start;
    if (start < line.end && m_source.at(start) == QLatin1Char(' '))
        ++start;
    if (isBlank(QStringView(m_source).mid(start, line.end - start)))
        return readAction(line, line.start, line.end, false);
    addLine(line, isSection ? QFnElement::SectionHeading : QFnElement::Synopsis, start, line.end);
    m_paragraphs.last().depth = isSection ? depth : 0;
    m_opensBlock = true;
}

void Reader::readHeading(const SourceLine &line)
{
    const int start = line.start + (m_source.at(line.start) == QLatin1Char('.') ? 1 : 0);
    const auto heading = Host::splitHeading(m_source.mid(start, line.end - start));
    const int end = start + int(heading.first.size());
    if (isBlank(QStringView(m_source).mid(start, end - start)))
        return readAction(line, line.start, line.end, false);
    addLine(line, QFnElement::SceneHeading, start, end);
    m_paragraphs.last().sceneNumber = heading.second;
}

void Reader::readTransition(const SourceLine &line)
{
    int start = line.start;
    if (m_source.at(start) == QLatin1Char('>'))
        ++start;
    if (start > line.start && start < line.end && m_source.at(start) == QLatin1Char(' '))
        ++start;
    if (isBlank(QStringView(m_source).mid(start, line.end - start)))
        return readAction(line, line.start, line.end, false);
    addLine(line, QFnElement::Transition, start, line.end);
}

void Reader::readCentredLine(const SourceLine &line)
{
    int start = line.start + 1;
    int end = line.end - 1;
    if (end - start > 2 && m_source.at(start) == QLatin1Char(' ')
        && m_source.at(end - 1) == QLatin1Char(' ')) {
        ++start;
        --end;
    }
    if (isBlank(QStringView(m_source).mid(start, end - start)))
        return readAction(line, line.start, line.end, false);
    readAction(line, start, end, true);
}

void Reader::readAction(const SourceLine &line, int start, int end, bool centred)
{
    if (m_joins && !m_opensBlock && m_paragraphs.last().centred == centred) {
        m_paragraphs.last().stretches.last().text += QChar(QChar::LineSeparator);
    } else {
        begin(line, QFnElement::Action);
        m_paragraphs.last().centred = centred;
    }
    addText(line, start, end);
    m_opensBlock = false;
    m_joins = true;
    m_speech = NoSpeech;
}

/// Starts a paragraph, which has the source from the end of the one above on.
void Reader::begin(const SourceLine &line, QFnElement::Type type)
{
    finish();
    Paragraph paragraph;
    paragraph.type = type;
    paragraph.line = line.number;
    paragraph.lineCount = 0;
    m_paragraphs.append(paragraph);
    m_joins = false;
}

/// Adds a paragraph of one line, with the text from \a start to \a end.
void Reader::addLine(const SourceLine &line, QFnElement::Type type, int start, int end)
{
    begin(line, type);
    addText(line, start, end);
    m_opensBlock = false;
    m_speech = NoSpeech;
}

/// The marks of emphasis from \a start to \a end that pair up: those of one kind open and close in
/// turn, open in front of text and close behind it. All others are text.
QVector<Span> Reader::emphasisMarks(const SourceLine &line, int start, int end)
{
    QVector<Span> marks;
    const QStringView text = QStringView(m_source).mid(start, end - start);
    if (!text.contains(QLatin1Char('*')) && !text.contains(QLatin1Char('_')))
        return marks;
    QVector<Span> open(3, Span{-1, -1, Stretch::Text});
    m_parser.buffer = text.toString();
    m_parser.initParser();
    int span = line.firstSpan;
    const int behindSpans = line.firstSpan + line.spanCount;
    for (QFnToken token = m_parser.nextToken(); token.kind != QFnToken::EndOfInput;
         token = m_parser.nextToken()) {
        const Span mark{start + m_parser.tokenStart + 1, start + m_parser.position + 1,
                        Stretch::Text};
        while (span < behindSpans && m_spans.at(span).end <= mark.start)
            ++span;
        const int style = styleOf(token.text);
        if (style < 0 || (span < behindSpans && m_spans.at(span).start < mark.start))
            continue;
        Span &opened = open[style];
        const bool afterText = mark.start > start && !isBlank(m_source.at(mark.start - 1));
        if (opened.start >= 0 && opened.end < mark.start && afterText) {
            marks << opened << mark;
            opened.start = -1;
        } else if (opened.start < 0 && mark.end < end && !isBlank(m_source.at(mark.end))) {
            opened = mark;
        }
    }
    std::sort(marks.begin(), marks.end(),
              [](const Span &a, const Span &b) { return a.start < b.start; });
    return marks;
}

/// Adds the text of a line from \a start to \a end to the last paragraph.
void Reader::addText(const SourceLine &line, int start, int end)
{
    const QFnElement::Type type = m_paragraphs.last().type;
    const bool isRaw = type == QFnElement::Character || type == QFnElement::SceneHeading
                       || type == QFnElement::SectionHeading;
    const QVector<Span> marks = isRaw ? QVector<Span>() : emphasisMarks(line, start, end);
    Stretch look;
    int mark = 0;
    int span = line.firstSpan;
    const int behindSpans = line.firstSpan + line.spanCount;
    for (int at = start; at < end;) {
        const int nextMark = mark < marks.size() ? marks.at(mark).start : end;
        const int nextSpan = span < behindSpans ? m_spans.at(span).start : end;
        if (at == nextSpan) {
            Stretch working = look;
            working.kind = m_spans.at(span).kind;
            addStretch(at, std::min(m_spans.at(span).end, end), working);
            at = m_spans.at(span++).end;
        } else if (at == nextMark) {
            const int size = marks.at(mark).end - at;
            bool &flag = size == 2                             ? look.bold
                         : m_source.at(at) == QLatin1Char('*') ? look.italic
                                                               : look.underline;
            flag = !flag;
            at = marks.at(mark++).end;
        } else {
            const int until = std::min({nextMark, nextSpan, end});
            addStretch(at, until, look);
            at = until;
        }
    }
    if (start == end)
        addStretch(start, end, look);
    endLine(line);
}

/// Counts the line to the last paragraph.
void Reader::endLine(const SourceLine &line)
{
    m_paragraphs.last().lineCount += line.count;
    m_sliceEnd = std::min(line.end + 1, int(m_source.size()));
}

void Reader::addStretch(int start, int end, Stretch look)
{
    QVector<Stretch> &stretches = m_paragraphs.last().stretches;
    const QString text =
        m_source.mid(start, end - start).replace(lineEnd, QChar(QChar::LineSeparator));
    const bool joins = !stretches.isEmpty() && stretches.last().looksLike(look)
                       && stretches.last().kind == Stretch::Text && look.kind == Stretch::Text
                       && stretches.last().start + stretches.last().text.size() == start;
    if (joins) {
        stretches.last().text += text;
        return;
    }
    look.text = text;
    look.start = start;
    stretches.append(look);
}

/// Ends the last paragraph, which keeps its source only if that is not what would be written.
void Reader::finish()
{
    if (m_paragraphs.isEmpty())
        return;
    Paragraph &last = m_paragraphs.last();
    const Paragraph *above =
        m_paragraphs.size() > 1 ? &m_paragraphs.at(m_paragraphs.size() - 2) : nullptr;
    const QString slice = m_source.mid(m_sliceStart, m_sliceEnd - m_sliceStart);
    if (Host::written(last, above, Form::Customary) != slice)
        last.source = slice;
    m_sliceStart = m_sliceEnd;
}

/// The text of a paragraph with the marks of its emphasis, which end with each line.
QString markedText(const QVector<Stretch> &stretches)
{
    QString text;
    QVector<int> open; // styles, in the order of opening
    const auto setStyle = [&](const Stretch &look) {
        const bool wanted[] = {look.underline, look.italic, look.bold};
        for (int i = int(open.size()) - 1; i >= 0; --i) {
            if (!wanted[open.at(i)])
                text += emphasis[open.takeAt(i)];
        }
        for (int style = 0; style < int(std::size(wanted)); ++style) {
            if (wanted[style] && !open.contains(style)) {
                text += emphasis[style];
                open.append(style);
            }
        }
    };
    for (const Stretch &stretch : stretches) {
        int at = 0;
        while (at < stretch.text.size()) {
            int end = int(stretch.text.indexOf(QChar(QChar::LineSeparator), at));
            const bool endsLine = end >= 0;
            end = endsLine ? end : int(stretch.text.size());
            if (end > at)
                setStyle(stretch);
            text += QStringView(stretch.text).mid(at, end - at).toString();
            if (endsLine) {
                setStyle(Stretch());
                text += lineEnd;
            }
            at = endsLine ? end + 1 : end;
        }
    }
    setStyle(Stretch());
    return text;
}

/// The lines of a paragraph in its customary form or with a mark that forces its kind.
QString markedLines(const Paragraph &paragraph, bool forced)
{
    QString text = markedText(paragraph.stretches);
    const auto isRead = [&text](QFnElement::Type type) {
        QFnFastParser parser(nullptr);
        return kindOf(text, true, &parser) == type;
    };
    switch (paragraph.type) {
    case QFnElement::Action:
        if (paragraph.centred)
            return "> "_L1 + text.replace(lineEnd, " <\n> "_L1) + " <"_L1;
        return forced ? QLatin1Char('!') + text : text;
    case QFnElement::SceneHeading:
        if (!paragraph.sceneNumber.isEmpty())
            text += " #"_L1 + paragraph.sceneNumber + QLatin1Char('#');
        return forced || !isRead(QFnElement::SceneHeading) ? QLatin1Char('.') + text : text;
    case QFnElement::Transition:
        return forced || !isRead(QFnElement::Transition) ? "> "_L1 + text : text;
    case QFnElement::SectionHeading:
        return QString(std::max(1, paragraph.depth), QLatin1Char('#')) + QLatin1Char(' ') + text;
    case QFnElement::Synopsis:
        return "= "_L1 + text;
    case QFnElement::Notes:
        return noteOpen + text + noteClose;
    case QFnElement::Boneyard:
        return commentOpen + text + commentClose;
    default:
        return text;
    }
}

bool isSpeech(const Paragraph &paragraph)
{
    return paragraph.type == QFnElement::Dialogue || paragraph.type == QFnElement::Parenthetical;
}

bool isBlankLine(const Paragraph &paragraph)
{
    return paragraph.type == QFnElement::Action && isBlank(paragraph.text());
}

/// Whether custom has a blank line between two paragraphs.
bool arePartedByBlank(const Paragraph &above, const Paragraph &below)
{
    return !isBlankLine(below) && !isSpeech(below) && !(above.titlePage && below.titlePage);
}

} // namespace

QString Host::Paragraph::text() const
{
    QString text;
    for (const Stretch &stretch : stretches)
        text += stretch.text;
    return text;
}

QVector<Host::Paragraph> Host::read(const QString &source)
{
    return Reader(source).paragraphs();
}

QString Host::written(const Paragraph &paragraph, const Paragraph *above, Form form)
{
    if (form == Form::Source && !paragraph.source.isEmpty())
        return paragraph.source;
    const bool parted = above && arePartedByBlank(*above, paragraph);
    return (parted ? "\n"_L1 : ""_L1) + markedLines(paragraph, form == Form::Forced) + lineEnd;
}

QString Host::written(const QVector<Paragraph> &paragraphs)
{
    QString text;
    const Paragraph *above = nullptr;
    for (const Paragraph &paragraph : paragraphs) {
        text += written(paragraph, above, Form::Source);
        above = &paragraph;
    }
    return text;
}

QPair<QString, QString> Host::splitHeading(const QString &text)
{
    const QChar mark = QLatin1Char('#');
    const int size = int(text.size());
    const int open = text.endsWith(mark) ? int(text.lastIndexOf(mark, size - 2)) : -1;
    const QString number = open > 0 ? text.mid(open + 1, size - open - 2) : QString();
    const auto isInNumber = [](QChar c) {
        return c.isLetterOrNumber() || c == QLatin1Char('.') || c == QLatin1Char('-');
    };
    const int comment = int(text.lastIndexOf(commentOpen));
    const bool isInComment = comment >= 0 && text.indexOf(commentClose, comment + 2) < 0;
    if (number.isEmpty() || isInComment || !std::all_of(number.begin(), number.end(), isInNumber))
        return {text, QString()};
    int end = open;
    while (end > 0 && isBlank(text.at(end - 1)))
        --end;
    return {text.left(end), number};
}
