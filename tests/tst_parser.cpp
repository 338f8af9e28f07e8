// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "dump.h"
#include "elements.h"

namespace {

// clang-format off
const Row tokenRows[] = {
    {"blanks and exclamation marks stand alone", u"Hi!! !!a\t b", u"W'Hi!!' S' ' W'!' W'!' W'a' S'\\t' S' ' W'b'"},
    {"lone CR ends nothing", u"x\r\n\na\rb\r", u"W'x' N'\\r\\n' N'\\n' W'a\\rb\\r'"},
    {"separators, each in front of a word", u"a#b:c^d(e)f>g<h.i_j", u"W'a' W'#' W'b' W':' W'c' W'^' W'd' W'(' W'e' W')' W'f' W'>' W'g' W'<' W'h' W'.' W'i' W'_' W'j'"},
    {"separators at the front", u"#a\n:\n^^((\n))>>\n<<__\n", u"W'#' W'a' N'\\n' W':' N'\\n' W'^' W'^' W'(' W'(' N'\\n' W')' W')' W'>' W'>' N'\\n' W'<' W'<' W'_' W'_' N'\\n'"},
    {"other characters are letters", u"z{|}~\u0080$%&',-;?@\\`\u0100 [a]b", u"W'z{|}~\u0080$%&',-;?@\\`\u0100' S' ' W'[a]b'"},
    {"marks at the end", u"a*", u"W'a' W'*'"},
    {"halves of marks at the end", u"a\r[", u"W'a\\r['"},
    {"half a boneyard at the end", u"]/", u"W']/'"},
    {"marks of two", u"a***b*c**[[d]]]", u"W'a' D'**' W'*' W'b' W'*' W'c' D'**' O'[[' W'd' C']]' W']'"},
    {"three equals signs are a mark", u"a==b=====c=", u"W'a' W'=' W'=' W'b' P'===' W'c' W'='"},
    {"run of dots; slash, bracket in a word", u"a...b./A p/q[x]", u"W'a' W'...' W'b' W'.' W'/A' S' ' W'p/q[x]'"},
    {"boneyard leaves no token", u"a //* x */b", u"W'a' S' ' W'/' W'b'\nBoneyard|| x "},
    {"boneyards", u"/**//*a *\n**//*/ b", u"\nBoneyard||\nBoneyard||a *\\n*\nBoneyard||/ b"},
};

const YesNoRow titleKeyRows[] = {
    {u"TITLE", true}, {u"CREDIT", true}, {u"AUTHOR", true}, {u"SOURCE", true}, {u"CONTACT", true},
    {u"DRAFT", true}, {u"NOTES", true}, {u"COPYRIGHT", true}, {u"Title", false}, {u"AUTHORS", false}, {u"", false},
};

const YesNoRow headingTokenRows[] = {
    {u"EXT", true},
    {u"INT", true},
    {u"EST", true},
    {u"INT./EXT", true},
    {u"INT/EXT", true},
    {u"I/E", true},
    {u"i/e", true},
    {u".h", true},
    {u".\u00e9", true},
    {u"", false},
    {u".", false},
    {u".-", false},
    {u"-a", false},
    {u"INT.", false},
};

const YesNoRow headingLineRows[] = {
    {u"INT A", true},
    {u"INT ", true},
    {u"INT. a", true},
    {u"INT/EXT. a", true},
    {u"INT.A", true},
    {u"INT.1", true},
    {u"INT/**/A", true},
    {u"INT.//*x*/EXT a", true},
    {u"INT.//*x*/EXT. a", true},
    {u"INT/*x*///*x*/EXT a", true},
    {u"INT.//**/EXT:", false},
    {u"INT.//**/A a", false},
    {u"INT: a", false},
    {u"INT... a", false},
    {u"INT.#1", false},
    {u"I a", false},
    {u" INT. a", false},
    {u"", false},
    {u"INT", false},
    {u"INT.", false},
    {u"INT.//**/", false},
    {u"INT.//**/EXT", false},
    {u"INT.//**/EXT.", false},
};

const YesNoRow doubleSpaceRows[] = {
    {u"JOHN  ", true},
    {u"JOHN \t", true},
    {u"  ", true},
    {u"JOHN ", false},
    {u" JOHN", false},
    {u" ", false},
    {u"", false},
};

const Row driverRows[] = {
    // The title page
    {"keys in any case", u"TITLE:a\ncredit:b\nSource:c\nContact:d\nNotes:e\nCopyright:f\n\n.g\n\n", u"@Contact|d\n@Copyright|f\n@Notes|e\n@Source|c\n@TITLE|a\n@credit|b\nScene Heading||g"},
    {"newer entry first", u"Title: \n\n A\n B\nAuthor: C\nAuthor: D\n", u"@Author|D\\n\n@Author|C\n@Title|A\\n B"},
    {"white space in front of a value", u"Title:\t\n \tA\n\nAuthor:B\nSource:  \n", u"@Author|B\n@Source|\n@Title|A"},
    {"line end with CR starts a value", u"Title:\r\nA\r\n\r\n", u"@Title|\\r\\nA"},
    {"boneyard in an entry", u"/*x*/Title: **A/*y*/[[n]]====\n\n", u"@Title|**A[[n]]===\nBoneyard||x\nBoneyard||y"},
    {"key is told by its upper case", u"\u017fource: x\n\n", u"@\u017fource|x"},
    {"draft takes two more tokens", u"Draft date: 1\nDraft: : 2\n\n", u"@Draft date|1\n@Draft: |2"},
    {"draft alone is lost", u"Draft: 1\n", u""},
    {"key without a colon is lost", u"AUTHOR OF IT\nx\n", u"Action||OF ITx"},
    {"line end behind a key is lost", u"Title\nA\nb\n", u"Character||A\nDialogue||b"},
    {"key behind a blank is text", u"  Title: A\n", u"Action||  Title: A"},
    {"entry leaves action open", u"a b\nAuthor: x\n\nc d\n", u"@Author|x\nAction||a bc d"},
    // Lines
    {"lines join, blank lines count", u"one\ntwo\n\nb\n\n\n", u"Action||onetwo\\nb\\n"},
    {"blanks and CR make no blank line", u"A\r\n\r\nB\rc\n \nd\r\n\r\n", u"Action||A\\r\\nB\\rc d\\r"},
    {"page break", u"a b\n===== TAIL\nx\n", u"Action||a b\nPageBreak||===\nAction|| TAILx"},
    {"block opens below a page break", u"A\n===\nB\nc\n", u"Character||A\nPageBreak||===\nCharacter||B\nDialogue||c"},
    {"lost page break", u"A\n_===\nb\n\nx y\n**===\nz\n", u"Character||A\nDialogue||b\nAction||x y\nAction||z"},
    {"page break takes an open style", u"a b**\n===\n", u"Action||a b\nPageBreak|b|==="},
    {"depth left over", u"##\n\na\n\n===\n\nb c\n", u"Action||a|depth 2\nPageBreak||===\nAction||b c"},
    // Boneyards
    {"boneyard in look-ahead comes once", u"x y\n/* n */z\n", u"Boneyard|| n \nAction||x yz"},
    {"boneyard closes text and style", u"**a b\nc\n/*n*/d\n", u"Action|b|a b\nBoneyard||n\nAction||cd"},
    {"line of a boneyard is blank", u"a\n/*b*/\nC\n", u"Boneyard||b\nAction||a\nCharacter||C"},
    {"boneyard joins lines", u"A/*\n\n*/B\nc\n", u"Boneyard||\\n\\n\nCharacter||AB\nDialogue||c"},
    {"boneyard in a speech", u"A\nb/*x*/c\nd\n", u"Character||A\nBoneyard||x\nDialogue||bc\nDialogue||d"},
    {"open boneyard leaves the type", u"a b\n\n/*c", u"Action||a b\nBoneyard||c\nAction||"},
    // U+FFFF
    {"U+FFFF in front of a line ends the text", u"A\uffffb\n\uffffc\n", u"Character||A\nDialogue||b"},
    {"U+FFFF behind draft is a token", u"Draft\uffffx: v\n\n", u"@Draftx|v"},
    {"U+FFFF behind a key ends the text", u"Title\uffffb c\n", u""},
    {"U+FFFF ends a boneyard", u"/*x\uffffy*/z\n", u"Boneyard||x\nAction||y\nAction|i|/z"},
    {"U+FFFF ends a note", u"[[x\uffffy]]\n", u"Notes||x\nAction||y]]"},
};

const Row inlineRows[] = {
    {"marks cut a line", u"a **b** c\n", u"Action||a \nAction|b|b\nAction|| c"},
    {"runs of marks", u"***a*** b_c****d\n", u"Action|bi|a\nAction|| b\nAction|u|c\nAction|u|d"},
    {"style stays, toggles start anew", u"a**\nb _c\n", u"Action||a\nAction|b|b \nAction|u|c"},
    {"line feed before a mark is cut", u"a b\n\n**c**\n", u"Action||a b\nAction|b|c\nAction||"},
    {"tabs", u"a\t**\tc[[\td]]\te\n", u"Action||a    \nAction|b|    c\nNotes||\\td\nAction|b|    e"},
    {"synopsis", u"= a**b**\t[[n]]c\n\n", u"Synopsis|| a\nSynopsis|b|b\nSynopsis||\\t\nNotes||n\nSynopsis||c"},
    {"mark at the end of a synopsis", u"= a**\n\nx y\n", u"Synopsis|| a\nAction|b|x y"},
    {"note at the end", u"a [[n]]\n\nb\n", u"Action||a \nNotes||n\nAction||b"},
    {"open note, empty note", u"[[a\n![[]]b\n", u"Notes||a\nAction||b"},
    {"note behind a mark is text", u"**[[x]] y\n", u"Action|b|[[x]] y"},
    {"marks in a note are text", u"a]] [[**x_ [[y]]\n", u"Action||a]] \nNotes||**x_ [[y\nAction||"},
    {"text behind notes", u"[[x]] b[[y]][[z]]c\n\nd\n", u"Notes||x\nAction|| b\nNotes||y\nNotes||z\nAction||c\\nd"},
    {"style behind a note", u"**a[[x]][[y]]b** c\n", u"Action|b|a\nNotes||x\nNotes||y\nAction|b|b\nAction|| c"},
    {"note takes an open style", u"a b**\n[[x]]c\n", u"Action||a b\nNotes|b|x\nAction||c"},
    // Alignment
    {"alignment", u"a\n> b <\n> c <\n\n> d <\n\ne\n", u"Action||a\nAction|c|bc\\nd\nAction||e"},
    {"centred text is trimmed", u"> \ta **b**\t <\n", u"Action|c|a \nAction|bc|b\nAction|c|"},
    {"open style goes with the alignment", u"A\n> x**<\nb\n", u"Character||A\nAction|c|x\nAction||b"},
    {"note and boneyard", u">a[[n]]b<\n>c/*x*/d<\n", u"Action|c|a\nNotes||n\nAction|c|b\nBoneyard||x\nAction|c|cd"},
    {"marks not at the very ends", u"**> a <\n> b < \n", u"Action|b|> a <> b < "},
    {"alignment left over", u"><\n===\n", u"PageBreak|c|==="},
};

const Row speechAndHeadingRows[] = {
    {"cue", u"  **A** (CONT'D.) XCONT'D [[N]] ^ \nb\n", u"Character||**A** (cont'd.) XCONT'D [[N]] ^\nDialogue||b"},
    {"cue of a blank", u" \nnext\n", u"Character||\nDialogue||next"},
    {"speech", u"A\n(b)\nc.\n**d** [[e]]\n", u"Character||A\nParenthetical||b\nDialogue||c.\nDialogue||**d** [[e]]"},
    {"parenthetical inside", u"A\na (b) c\n", u"Character||A\nDialogue||a \nParenthetical||b\nDialogue|| c"},
    {"parenthetical empty, open", u"A\n()\n(d\ne\n", u"Character||A\nParenthetical||\nParenthetical||d\nDialogue||e"},
    {"no nesting", u"A\n(a (b) c)\n  \n", u"Character||A\nParenthetical||a (b\nDialogue|| c)\nDialogue||  "},
    {"heading is raw", u".  a **b** [[n]] \n\n", u"Scene Heading||a **b** [[n]] "},
    {"scene numbers", u".a #1.5# - b\n\n.c# 1 ##2#\n\n", u"Scene Heading||a  - b|#1.5\nScene Heading||c|# 1 2"},
    {"open scene numbers", u".a #1 - b\n\n.c#\n\n", u"Scene Heading||a |#1 - b\nScene Heading||c"},
    {"sections", u"### a b\n\n#\t**c** # d\n\n", u"Section Heading||a b|depth 3\nSection Heading||**c** # d|depth 1"},
    {"nothing behind the mark", u"a\n\n=\n\n>\n\nb c\n", u"Action||a\nAction||b c"},
};

const Row dispatchRows[] = {
    {"end of input is no blank line", u"INT. A\n", u"Character||INT. A"},
    {"cues above text", u"INT. A\nb\n\nTO:\n", u"Character||INT. A\nDialogue||b\nCharacter||TO:"},
    {"keyword goes", u"int a\n\ne\u017ft. b\n\nEXT.C\n\n", u"Scene Heading||a\nScene Heading||b\nScene Heading||C"},
    {"keyword alone is action", u"INT\n\nINT.\n\nx\n", u"Action||INT\\nINT.\\nx"},
    {"forced", u"..a\n\n. b\n\n.c\n\n.\n\n", u"Action||..a\nScene Heading||b\nScene Heading||c\nScene Heading||"},
    {"speech ends", u"A\r\n(b)\r\nc\r\n\r\nd e\r\n", u"Character||A\nParenthetical||b\nDialogue||c\nAction||d e"},
    {"blank line or two blanks, no cue", u"A\n\nB  \nc\n", u"Action||A\\nB  c"},
    {"no small letters", u"# ACT\na\n\n123\n", u"Character||# ACT\nDialogue||a\nCharacter||123"},
    {"forced action ends a speech", u"A\n!B\nc\n", u"Character||A\nAction||Bc"},
    {"forced action behind marks", u"**!CUT TO:**\n\n", u"Action|b|!CUT TO:\nAction||"},
    {"one mark goes", u"> a\n\n= b\n\n== c\n\n", u"Transition|| a\nSynopsis|| b\nSynopsis||= c"},
    {"marks in or above text", u"a\n> b\n\n# c\n= d\n", u"Action||a> b\\n# c= d"},
    {"behind emphasis", u"**>x**\n\n*= y*\n\n**# z**\n\n", u"Transition|b|x\nSynopsis|i| y\nSection Heading||**# z**"},
    {"headings behind emphasis", u"**.x**\n\n_INT. y\n\n", u"Scene Heading||**x**\nAction|u|INT. y"},
    {"TO: behind letters beyond ASCII", u"A \u0130TO:\n\nO:\n\n", u"Transition||A \u0130TO:\nAction||O:"},
    {"capitals and TO:", u" A TO:\n\n**TO:**\n\n", u"Transition|| A TO:\nTransition|b|TO:\nTransition||"},
    {"not quite a transition", u"Cut to:\n\nTO: \n\nTHE END\n\n", u"Action||Cut to:\\nTO: \\nTHE END"},
    {"emphasis alone gives nothing", u"**\na b\n\nC\n*_*\nd\n", u"Action||a b\nCharacter||C\nDialogue||d"},
    {"a and z are small letters, what stands beside them is none", u"Aa\nx\n\nAz\nx\n\n`{\u0080\nx\n", u"Action||Aax\\nAzx\nCharacter||`{\u0080\nDialogue||x"},
    {"letters that change", u"\u0149\nx\n\n\u01c5\ny\n\nA\u00dfE\nz\n", u"Action||\u0149x\\n\u01c5y\\nA\u00dfEz"},
    {"split pair of a small letter", u"\xD801/*x*/\xDC28\ny\n", u"Boneyard||x\nAction||\U00010428y"},
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // to Qt 6 a letter behind a lone surrogate has capitals
    {"TO: without capitals", u"\xD801" u"tO:\n\n", u"Transition||\xD801" u"tO:"},
    {"a lone surrogate keeps the letter behind it from having capitals", u"\xD801" u"b\nx\n", u"Character||\xD801" u"b\nDialogue||x"},
#endif
    {"lone surrogates are kept", u"\xDC28 \xD801\n\xD801\n", u"Character||\xDC28 \xD801\nDialogue||\xD801"},
};
// clang-format on

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

QString dump(const QFnToken &token)
{
    QString letter = u"?"_s;
    for (const KindLetter &row : kindLetters) {
        if (row.kind == token.kind)
            letter = QChar(row.letter);
    }
    return letter + u'\'' + escaped(token.text) + u'\'';
}

/// What a parser has stored, then its state and the element under construction.
QString dump(const QFnFastParser &parser)
{
    const QString open = QString::number(parser.state) + u' ' + dump(parser.currentElement);
    return (dump(*parser.document).split(u'\n', Qt::SkipEmptyParts) << open).join(u'\n');
}

QList<QFnToken> lineOf(const QString &text)
{
    QFnFastParser parser(nullptr);
    parser.buffer = text;
    QList<QFnToken> tokens;
    while (parser.nextToken().kind != QFnToken::EndOfInput)
        tokens += parser.currentToken;
    return tokens;
}

QString tokensIn(const QString &text)
{
    QFnFastParser parser(nullptr);
    parser.buffer = text;
    QStringList list;
    while (parser.nextToken().kind != QFnToken::EndOfInput)
        list += dump(parser.currentToken);
    const QString stored = dump(*parser.document);
    return list.join(u' ') + u"\n"_s.left(int(stored.size())) + stored;
}

/// What a text gives, without a plain closing element.
QString script(const QString &text)
{
    QFnFastParser parser(nullptr);
    parser.parse(text);
    QStringList lines = dump(*parser.document).split(u'\n');
    if (lines.last() == u"Undefined||"_s || lines.last() == u"Dialogue||"_s)
        lines.removeLast();
    return lines.join(u'\n');
}

// What a caller does with a parser, a step a line: an operation and the text that it works on.
using Parser = QFnFastParser;

struct LineParser
{
    const char *name;
    void (Parser::*operation)(QList<QFnToken> *);
};

constexpr LineParser lineParsers[] = {
    {"notes", &Parser::parseNotes},           {"synopsis", &Parser::parseSynopsis},
    {"general", &Parser::parseGeneralLine},   {"transition", &Parser::parseTransitionLine},
    {"dialogue", &Parser::parseDialogueLine}, {"cue", &Parser::parseCharacter},
    {"heading", &Parser::parseSceneHeading},  {"section", &Parser::parseSectionHeading},
};

void take(Parser &parser, const QString &step)
{
    const QString name = step.section(u' ', 0, 0);
    const QString text = step.section(u' ', 1);
    QList<QFnToken> line = lineOf(text);
    if (name == u"state"_s)
        return parser.changeParserState(Parser::ParserState(text.toInt()));
    if (name == u"open"_s)
        parser.currentElement.text = text;
    else if (step == u"store open"_s)
        parser.appendCurrentElement();
    else if (name == u"store"_s)
        parser.appendElement(text.isEmpty() ? nullptr : new QFnElement(elementOf(text)));
    else if (name == u"action"_s || name == u"centred"_s)
        parser.parseActionLine(&line, name == u"centred"_s);
    else if (name == u"left"_s || name == u"center"_s)
        parser.parseText(&line, nullptr, name == u"left"_s ? Qt::AlignLeft : Qt::AlignCenter);
    for (const LineParser &row : lineParsers) {
        if (name == QLatin1String(row.name))
            (parser.*row.operation)(&line);
    }
    QVERIFY(line.isEmpty() || name == u"open"_s || name == u"store"_s);
}

QString taken(const QString &steps)
{
    Parser parser(nullptr);
    for (const QString &step : steps.split(u'\n'))
        take(parser, step);
    return dump(parser);
}

// clang-format off
const Row stepRows[] = {
    {"each state gives its type", u"state 2\nstore open\nstate 3\nstore open\nstate 4\nstore open\nstate 5\nstore open\nstate 6\nstore open\nstate 7",
     u"Action||\nDialogue||\nScene Heading||\nSection Heading||\nSynopsis||\n7 Transition||"},
    {"each further one too", u"state 8\nstore open\nstate 9\nstore open\nstate 10\nstore open\nstate 11\nstore open\nstate 12",
     u"Character||\nNotes||\nParenthetical||\nPageBreak||\n12 General||"},
    {"Idle and what is no state leave the type", u"state 4\nstate 0\nstore open\nstate 4\nstate 1\nstore open\nstate 12\nstate 13", u"Scene Heading||\nScene Heading||\n13 General||"},
    {"what is stored leaves the state", u"state 2\nstore open\naction a\nstate 2\nstore open\ncentred b", u"Action||\nUndefined||a\nAction||\n2 Action|c|b"},
    {"the same state closes text, Idle does not", u"open a\nstate 2\nstate 2\nopen b\nstate 0\nopen c\nstate 9", u"Action||a\nAction||b\n9 Notes||c"},
    {"dialogue from Idle takes the open text", u"open z\ndialogue a (b) c", u"Dialogue||za \nParenthetical||b\nDialogue|| c\n3 Dialogue||"},
    {"dialogue closes action", u"state 2\nopen z\ndialogue a", u"Action||z\nDialogue||a\n3 Dialogue||"},
    {"action closes dialogue", u"state 3\nopen z\naction a\tb", u"Dialogue||z\n2 Action||a    b"},
    {"action goes on, centred action does not", u"action a\naction  b \ncentred  c ", u"Action||a b \n2 Action|c|c"},
    {"text keeps the type of its element", u"state 6\nopen z\nleft a**b** [[n]]\tc", u"Synopsis||za\nSynopsis|b|b\nSynopsis|| \nNotes||n\n6 Synopsis||\\tc"},
    {"text in no state", u"open z\ncenter  a*b[[n]]c", u"Undefined||z a\nNotes|i132|bn\n0 Undefined|i132|c"},
    {"blanks go at the ends of centred action", u"state 2\nopen z\ncenter  \ta *b* ", u"Action||za \nAction|i132|b\n2 Action|132|"},
    {"blanks stay in any other state", u"state 12\ncenter  a ", u"12 General|| a "},
    {"notes in notes", u"state 9\nopen z\nnotes a\t[[b]]", u"Notes||za\\t\nNotes||b\n0 Notes||"},
    {"general line", u"state 2\nopen z\ngeneral a **b** [[n]]\tc", u"Action||z\nGeneral||a \nGeneral|b|b\nGeneral|| \nNotes||n\nGeneral||\\tc\n0 Undefined||"},
    {"empty lines", u"cue\nheading\nsynopsis", u"Character||\nScene Heading||\n0 Synopsis||"},
    {"cue closes action", u"state 2\nopen z\ncue  \tA CONT'D cont'd CONT'D\r", u"Action||z\nCharacter||A cont'd cont'd CONT'D\n3 Dialogue||"},
    {"heading", u"heading  \t a #1# b#2", u"Scene Heading||a  b|#12\n0 Undefined||"},
    {"section without text leaves its depth", u"section ## \naction a", u"2 Action||a|depth 2"},
    {"one line feed of action is cut", u"store Action||a\\n\\n\nstore Action||b\nstore\nstore Notes||c\\n", u"Action||a\\n\nAction||b\nNotes||c\\n\n0 Undefined||"},
};

/// Reads up to \a count tokens.
QString read(Parser &p, int count)
{
    QStringList tokens;
    for (; count > 0; --count) {
        const QFnToken token = p.nextToken();
        tokens += dump(token);
        if (dump(token) != dump(p.currentToken))
            tokens += u"is not current"_s;
    }
    return tokens.join(u' ');
}

using Reading = QString (*)(Parser &);

struct ReadingRow
{
    const char *name;
    Reading reading;
    std::u16string_view expected; ///< the tokens, position and tokenStart, and what is stored
};

const ReadingRow readingRows[] = {
    {"new", [](Parser &p) { return dump(p.currentToken); }, u"W'' -1 -1"},
    {"at the end", [](Parser &p) { return read(p, 3); }, u"E'' E'' E'' 2 1"},
    {"each token", [](Parser &p) { p.buffer = u"ab cd"_s; return read(p, 3); }, u"W'ab' S' ' W'cd' 4 2"},
    {"rewind", [](Parser &p) { p.buffer = u"ab====c"_s; const QString first = read(p, 2); p.position = p.tokenStart; return first + read(p, 2); }, u"W'ab' P'==='P'===' W'c' 6 5"},
    {"rewind behind a boneyard", [](Parser &p) { p.buffer = u"a/*x*/b"_s; read(p, 2); p.position = p.tokenStart; return read(p, 1); }, u"W'b' 6 5 Boneyard||x"},
    {"boneyard closes the open text", [](Parser &p) { p.changeParserState(Parser::InNotes); p.currentElement.text = u"z"_s; p.buffer = u"/*x*/"_s; read(p, 1); return dump(p.currentElement); }, u"Notes|| 5 4 Notes||z Boneyard||x"},
    {"another buffer", [](Parser &p) { p.buffer = u"one two"_s; const QString first = read(p, 1); p.buffer = u"x yz12 w"_s; return first + read(p, 2); }, u"W'one'W'z12' S' ' 6 5"},
    {"shorter buffer", [](Parser &p) { p.buffer = u"one two"_s; read(p, 3); p.buffer = u"x"_s; const QString kept = dump(p.currentToken); return kept + read(p, 1); }, u"W'two'E'' 7 6"},
    {"buffer that changes behind a line", [](Parser &p) {
         p.buffer = u"a [[b"_s;
         QList<QFnToken> line;
         for (; p.nextToken().kind != QFnToken::EndOfInput;) line += p.currentToken;
         p.buffer.fill(u'x'); p.buffer.clear();
         p.parseGeneralLine(&line);
         return read(p, 1); }, u"E'' 6 5 General||a  Notes||b"},
    {"buffer that goes between two lines", [](Parser &p) {
         p.buffer = u"a b"_s; read(p, 3); QList<QFnToken> line{p.currentToken};
         p.parseActionLine(&line, false);
         p.buffer = QString(); p.parse(u"c d\n"_s);
         return dump(p.currentToken); }, u"E'' 3 3 Action||c d"},
    {"buffer inside a longer text", [](Parser &p) { static const QString text = u"a**b"_s; p.buffer = QString::fromRawData(text.constData(), 2); return read(p, 3); }, u"W'a' W'*' E'' 2 1"},
    {"in the middle of a mark", [](Parser &p) { p.buffer = u"a**b"_s; p.position = 1; return read(p, 2); }, u"W'*' W'b' 3 2"},
    {"far behind the end", [](Parser &p) { p.buffer = u"a"_s; p.position = 70; const QString end = read(p, 1); return end + QString::number(p.nextChar().unicode()); }, u"E''65535 71 70"},
    {"characters", [](Parser &p) { p.buffer = u"ab"_s; QString text = p.nextChar(); text += p.getch(); text += p.getch(); return text + QString::number(p.getch().unicode()); }, u"aab65535 2 -1"},
    {"white space", [](Parser &p) { p.buffer = u" \t\n\r a"_s; p.skipWhitespaces(); return QString(); }, u" 2 -1"},
    {"white space at the end", [](Parser &p) { p.buffer = u" \n"_s; p.skipWhitespaces(); return QString(); }, u" 1 -1"},
    {"blanks in front of a line", [](Parser &p) { auto line = lineOf(u" \t a "_s), blank = lineOf(u"  "_s); p.skipWhitespaces(&line); p.skipWhitespaces(&line); p.skipWhitespaces(&blank); return dump(line.first()) + QString::number(blank.size()); }, u"W'a'0 -1 -1"},
    {"no white space", [](Parser &p) { p.buffer = u"a "_s; p.skipWhitespaces(); return QString(); }, u" -1 -1"},
    {"marks are told by text, bold by kind", [](Parser &p) {
         QList<QFnToken> line{{QFnToken::Space, u"*"_s}, {QFnToken::DoubleStar, u"a"_s}, {QFnToken::NewLine, u"_"_s}, {QFnToken::EndOfInput, u"b"_s}, {QFnToken::Word, u"**"_s}};
         p.parseText(&line, nullptr, Qt::AlignLeft); return dump(p.currentElement); }, u"Undefined|biu|b** -1 -1"},
    {"tokens without text, of no kind", [](Parser &p) {
         QList<QFnToken> line{{QFnToken::Word, QString()}, {QFnToken::OpenNote, QString()}, {QFnToken::Kind(3), u"a"_s}, {QFnToken::CloseNote, u"x"_s}};
         p.parseText(&line, nullptr, Qt::AlignLeft); return dump(p.currentElement); }, u"Undefined|| -1 -1 Notes||a"},
    {"tokens that share the open text", [](Parser &p) {
         p.changeParserState(Parser::InAction); p.currentElement.text = u"z\t"_s;
         QList<QFnToken> line{{QFnToken::Word, p.currentElement.text}, {QFnToken::Word, p.currentElement.text}};
         p.parseText(&line, nullptr, Qt::AlignLeft); return dump(p.currentElement); }, u"Action||z\\tz    z     -1 -1"},
    {"title page keeps both entries", [](Parser &p) { p.appendTitlePageElement(u"A"_s, u"1"_s); p.appendTitlePageElement(u"A"_s, u"2"_s); return QString(); }, u" -1 -1 @A|2 @A|1"},
    {"back to the start", [](Parser &p) { p.parse(u"Title: a\n\nb c\n"_s); p.currentElement.text = u"d"_s; p.state = Parser::InNotes; p.initParser(); return QString::number(p.state) + dump(p.currentElement); }, u"0Undefined||d -1 13"},
    {"main loop takes what is open", [](Parser &p) { p.state = Parser::InNotes; p.currentElement.text = u"z"_s; p.buffer = u"a b\n"_s; p.parseBuffer(); return QString::number(p.state); }, u"2 3 3 Action||za b"},
    {"main loop at the end of the input", [](Parser &p) { p.buffer = u"a b\n"_s; p.currentToken = {QFnToken::EndOfInput, u"x"_s}; p.parseBuffer(); return dump(p.currentToken); }, u"E'x' -1 -1 Undefined||"},
    {"end of a parse", [](Parser &p) { p.parse(u"a b\n"_s); return p.buffer + dump(p.currentToken); }, u"a b\\nE'' 3 3 Action||a b"},
};
// clang-format on

} // namespace

Q_DECLARE_METATYPE(Reading)

class ParserTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tokens_data() { addRows(tokenRows); }
    void tokens() { check(tokensIn); }
    void driver_data() { addRows(driverRows); }
    void driver() { check(script); }
    void inlineText_data() { addRows(inlineRows); }
    void inlineText() { check(script); }
    void speechAndHeadings_data() { addRows(speechAndHeadingRows); }
    void speechAndHeadings() { check(script); }
    void dispatch_data() { addRows(dispatchRows); }
    void dispatch() { check(script); }

    void titlePageKeys_data() { addRows(titleKeyRows); }
    void titlePageKeys() { check(Parser::isTitlePageKey); }
    void headingTokens_data() { addRows(headingTokenRows); }
    void headingTokens() { check(Parser::isSceneHeadingToken); }
    void headingLines_data() { addRows(headingLineRows); }
    void headingLines()
    {
        check([](const QString &text) {
            QList<QFnToken> line = lineOf(text);
            return Parser::isSceneHeadingLine(&line);
        });
    }
    void doubleSpaces_data() { addRows(doubleSpaceRows); }
    void doubleSpaces()
    {
        check([](const QString &text) {
            QList<QFnToken> line = lineOf(text);
            return Parser(nullptr).endsWithDblSpace(&line);
        });
    }
    void steps_data() { addRows(stepRows); }
    void steps() { check(taken); }

    void tokensInHand_data()
    {
        QTest::addColumn<Reading>("reading");
        QTest::addColumn<QString>("expected");
        for (const ReadingRow &row : readingRows)
            QTest::newRow(row.name) << row.reading << textOf(row.expected);
    }
    void tokensInHand()
    {
        QFETCH(Reading, reading);
        Parser parser(nullptr);
        QStringList parts{escaped(reading(parser))};
        parts << QString::number(parser.position) << QString::number(parser.tokenStart);
        parts += dump(*parser.document).split(u'\n', Qt::SkipEmptyParts);
        QTEST(parts.join(u' '), "expected");
    }

    void secondParseIsLikeTheFirst()
    {
        QFnFastParser parser(nullptr);
        QVERIFY(parser.parse(u"Title: A\n\nJOHN\nHi (x) **a /* b"_s));
        parser.currentElement = elementOf(u"Notes|bc|left"_s);
        QCOMPARE(parser.metaObject()->className(), "QFnFastParser");
        QCOMPARE(parser.document->parent(), &parser);
        QVERIFY(parser.parse(u"A\n\n**b\0** c\n\n.d\n\n"_s));
        QCOMPARE(dump(*parser.document),
                 u"Action||A\nAction|b|b\0\nAction|| c\nScene Heading||d\nUndefined||"_s);
    }
};

QTEST_GUILESS_MAIN(ParserTest)
#include "tst_parser.moc"
