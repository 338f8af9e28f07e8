// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "bench/heap.h"
#include "bench/shapes.h"
#include "dump.h"
#include "elements.h"

namespace {

using Parser = QFnFastParser;
using Line = QList<QFnToken>;

struct KindLetter
{
    QFnToken::Kind kind;
    char16_t letter;
};

constexpr KindLetter kindLetters[] = {
    {QFnToken::Word, u'W'},      {QFnToken::DoubleStar, u'D'}, {QFnToken::PageBreakMark, u'P'},
    {QFnToken::NewLine, u'N'},   {QFnToken::Space, u'S'},      {QFnToken::OpenNote, u'O'},
    {QFnToken::CloseNote, u'C'}, {QFnToken::EndOfInput, u'E'},
};

/// Tokens as "W'word' S' '": the letter of the kind, and the text.
QString dump(const Line &line)
{
    QStringList tokens;
    for (const QFnToken &token : line) {
        for (const KindLetter &row : kindLetters) {
            if (row.kind == token.kind)
                tokens += QChar(row.letter) + u'\'' + escaped(token.text) + u'\'';
        }
    }
    return tokens.join(u' ');
}

/// The tokens of a text. Behind the buffer its last character stands once more, and is not read.
Line lineOf(const QString &text)
{
    const QString longer = text + text.right(1);
    Parser parser(nullptr);
    parser.buffer = QString::fromRawData(longer.constData(), text.size());
    Line line;
    while (parser.nextToken().kind != QFnToken::EndOfInput)
        line += parser.currentToken;
    return line;
}

/// What a text gives, without a plain closing element.
QString script(const QString &text)
{
    Parser parser(nullptr);
    parser.parse(text);
    QStringList lines = dump(*parser.document).split(u'\n');
    if (lines.last() == u"Undefined||"_s || lines.last() == u"Dialogue||"_s)
        lines.removeLast();
    return lines.join(u'\n');
}

bool isHeadingLine(const QString &text)
{
    Line line = lineOf(text);
    return Parser::isSceneHeadingLine(&line);
}

bool endsInTwoSpaces(const QString &text)
{
    Line line = lineOf(text);
    return Parser(nullptr).endsWithDblSpace(&line);
}

/// Texts of which a test accepts some, with "|" between them.
struct TestRow
{
    bool (*test)(const QString &);
    QString accepted, refused;
};

// clang-format off
const TestRow testRows[] = {
    {[](const QString &t) { return Parser::isTitlePageKey(t); }, u"TITLE|CREDIT|AUTHOR|SOURCE|CONTACT|DRAFT|NOTES|COPYRIGHT"_s, u"Title|AUTHORS|"_s},
    {Parser::isSceneHeadingToken, u"EXT|INT|EST|INT./EXT|INT/EXT|I/E|i/e|.h|.\u00e9"_s, u"|.|.-|-a|INT."_s},
    {isHeadingLine, u"INT A|INT |INT. a|INT.A|INT.1|INT/**/A"_s, u"|INT|INT.|INT: a|INT... a|INT.#1|I a| INT. a"_s},
    {isHeadingLine, u"INT/EXT. a|INT.//*x*/EXT a|INT.//*x*/EXT. a|INT/*x*///*x*/EXT a"_s, u"INT.//**/|INT.//**/EXT|INT.//**/EXT.|INT.//**/EXT:|INT.//**/A a"_s},
    {endsInTwoSpaces, u"JOHN  |JOHN \t|  "_s, u"JOHN | JOHN| |"_s},
};
// clang-format on

/// What callers do with a parser, a step a line: the name of a slot and the text that it gets, in
/// which line feeds are "\\n".
class Caller : public QObject
{
    Q_OBJECT

public:
    explicit Caller(const QString &steps)
    {
        for (const QString &step : steps.split(u'\n')) {
            const QByteArray name = step.section(u' ', 0, 0).toLatin1();
            const QString text = step.section(u' ', 1).replace(u"\\n"_s, u"\n"_s);
            if (!QMetaObject::invokeMethod(this, name.constData(), Q_ARG(QString, text)))
                qFatal("There is no step %s", name.constData());
        }
    }

    /// What is in the document, the state, the open element, and what is left of the last line.
    QString stored() const
    {
        const QString open =
            QString::number(p.state) + u' ' + dump(p.currentElement) + dump(m_line);
        return (dump(*p.document).split(u'\n', Qt::SkipEmptyParts) << open).join(u'\n');
    }

    /// What the steps read, and in parentheses the current token, position and tokenStart.
    QString read() const
    {
        const QString place =
            u"(%1 %2 %3)"_s.arg(dump({p.currentToken})).arg(p.position).arg(p.tokenStart);
        return (QStringList(m_read) << place).join(u' ');
    }

private Q_SLOTS:
    void state(const QString &number) { p.changeParserState(Parser::ParserState(number.toInt())); }
    void open(const QString &text) { p.currentElement.text = text; }
    void store(const QString &text) { p.appendElement(new QFnElement(elementOf(text))); }
    void storeNull(const QString &) { p.appendElement(nullptr); }
    void storeOpen(const QString &) { p.appendCurrentElement(); }
    void entry(const QString &text) { p.appendTitlePageElement(text.left(1), text.mid(1)); }

    void left(const QString &text) { p.parseText(lineFrom(text), nullptr, Qt::AlignLeft); }
    void center(const QString &text) { p.parseText(lineFrom(text), nullptr, Qt::AlignCenter); }
    void action(const QString &text) { p.parseActionLine(lineFrom(text), false); }
    void centred(const QString &text) { p.parseActionLine(lineFrom(text), true); }
    void notes(const QString &text) { p.parseNotes(lineFrom(text)); }
    void synopsis(const QString &text) { p.parseSynopsis(lineFrom(text)); }
    void general(const QString &text) { p.parseGeneralLine(lineFrom(text)); }
    void transition(const QString &text) { p.parseTransitionLine(lineFrom(text)); }
    void dialogue(const QString &text) { p.parseDialogueLine(lineFrom(text)); }
    void cue(const QString &text) { p.parseCharacter(lineFrom(text)); }
    void heading(const QString &text) { p.parseSceneHeading(lineFrom(text)); }
    void section(const QString &text) { p.parseSectionHeading(lineFrom(text)); }
    void trim(const QString &text) { p.skipWhitespaces(lineFrom(text)); }

    void parse(const QString &text) { p.parse(text); }
    void parseBuffer(const QString &) { p.parseBuffer(); }
    void initParser(const QString &) { p.initParser(); }
    void buffer(const QString &text) { p.buffer = text; }
    void position(const QString &number) { p.position = number.toInt(); }
    void rewind(const QString &) { p.position = p.tokenStart; }
    void skip(const QString &) { p.skipWhitespaces(); }
    void next(const QString &) { m_read += QString::number(p.nextChar().unicode()); }
    void getch(const QString &) { m_read += QString::number(p.getch().unicode()); }
    void read(const QString &count)
    {
        Line line;
        while (line.size() < count.toInt())
            line += p.nextToken();
        m_read += dump(line);
    }

private:
    Line *lineFrom(const QString &text)
    {
        m_line = lineOf(text);
        return &m_line;
    }

    Parser p{nullptr};
    Line m_line; ///< of the last step, which is to leave nothing of it
    QStringList m_read;
};

struct Cost
{
    qint64 parts, bytes; ///< elements and entries, and what they and the way to them took
};

Cost costOf(const QString &text)
{
    Parser parser(nullptr);
    const qint64 before = heapUse().bytes;
    parser.parse(text);
    const qint64 parts = parser.document->elements.size() + parser.document->titlePage.size();
    return {parts, heapUse().bytes - before};
}

} // namespace

class ParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void testsOfALine()
    {
        for (const TestRow &row : testRows) {
            QStringList passed;
            for (const QString &text : (row.accepted + u'|' + row.refused).split(u'|')) {
                if (row.test(text))
                    passed += text;
            }
            QCOMPARE(passed.join(u'|'), row.accepted);
        }
    }
    void tokens_data() { addCases({u"parser-tokens"_s}); }
    void tokens()
    {
        check([](const QString &text) { return dump(lineOf(text)); });
    }
    void scripts_data()
    {
        QStringList tables{u"parser-scripts"_s};
        if (QT_VERSION < QT_VERSION_CHECK(6, 0, 0))
            tables += u"parser-scripts-qt5"_s;
        addCases(tables);
    }
    void scripts() { check(script); }
    void steps_data() { addCases({u"parser-steps"_s}); }
    void steps()
    {
        check([](const QString &steps) { return Caller(steps).stored(); });
    }
    void reading_data() { addCases({u"parser-reading"_s}); }
    void reading()
    {
        check([](const QString &steps) { return Caller(steps).read(); });
    }

    void secondParseIsLikeTheFirst()
    {
        Parser parser(nullptr);
        QCOMPARE(parser.metaObject()->className(), "QFnFastParser");
        QCOMPARE(parser.document->parent(), &parser);
        parser.parse(u"Title: A\n\nJOHN\nHi (x) **a /* b"_s);
        parser.currentElement = elementOf(u"Notes|bc|left"_s);
        QVERIFY(parser.parse(u"A\n\n**b\0** c\n\n.d\n\n"_s));
        QCOMPARE(dump(*parser.document),
                 u"Action||A\nAction|b|b\0\nAction|| c\nScene Heading||d\nUndefined||"_s);
    }

    /// A step whose cost grows with the square of the text shows in what it makes and copies.
    void costGrowsWithTheText()
    {
        QStringList dear;
        for (const Shape &shape : shapes) {
            const Cost once = costOf(shape.text(4096)), twice = costOf(shape.text(2 * 4096));
            if (twice.parts > 2 * once.parts || twice.bytes > 3 * once.bytes)
                dear += QString::fromLatin1(shape.name);
        }
        QCOMPARE(dear, QStringList());
    }
};

QTEST_GUILESS_MAIN(ParserTest)
#include "tst_parser.moc"
