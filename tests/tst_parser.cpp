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
    std::u16string_view accepted, refused;
};

// clang-format off
const TestRow testRows[] = {
    {[](const QString &t) { return Parser::isTitlePageKey(t); }, u"TITLE|CREDIT|AUTHOR|SOURCE|CONTACT|DRAFT|NOTES|COPYRIGHT", u"Title|AUTHORS|"},
    {Parser::isSceneHeadingToken, u"EXT|INT|EST|INT./EXT|INT/EXT|I/E|i/e|.h|.\u00e9", u"|.|.-|-a|INT."},
    {isHeadingLine, u"INT A|INT |INT. a|INT.A|INT.1|INT/**/A", u"|INT|INT.|INT: a|INT... a|INT.#1|I a| INT. a"},
    {isHeadingLine, u"INT/EXT. a|INT.//*x*/EXT a|INT.//*x*/EXT. a|INT/*x*///*x*/EXT a", u"INT.//**/|INT.//**/EXT|INT.//**/EXT.|INT.//**/EXT:|INT.//**/A a"},
    {endsInTwoSpaces, u"JOHN  |JOHN \t|  ", u"JOHN | JOHN| |"},
};

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
    {"boneyard leaves no token", u"a //* x */b", u"W'a' S' ' W'/' W'b'"},
};

const Row scriptRows[] = {
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
    // Emphasis, notes, alignment
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
    {"alignment", u"a\n> b <\n> c <\n\n> d <\n\ne\n", u"Action||a\nAction|c|bc\\nd\nAction||e"},
    {"centred text is trimmed", u"> \ta **b**\t <\n", u"Action|c|a \nAction|bc|b\nAction|c|"},
    {"open style goes with the alignment", u"A\n> x**<\nb\n", u"Character||A\nAction|c|x\nAction||b"},
    {"note and boneyard", u">a[[n]]b<\n>c/*x*/d<\n", u"Action|c|a\nNotes||n\nAction|c|b\nBoneyard||x\nAction|c|cd"},
    {"marks not at the very ends", u"**> a <\n> b < \n", u"Action|b|> a <> b < "},
    {"alignment left over", u"><\n===\n", u"PageBreak|c|==="},
    // Speeches and headings
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
    // What kind of line it is
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

// The elements that the steps of a caller store, the state, and the open element.
const Row stepRows[] = {
    {"each state gives its type", u"state 2\nstoreOpen\nstate 3\nstoreOpen\nstate 4\nstoreOpen\nstate 5\nstoreOpen\nstate 6\nstoreOpen\nstate 7", u"Action||\nDialogue||\nScene Heading||\nSection Heading||\nSynopsis||\n7 Transition||"},
    {"each further one too", u"state 8\nstoreOpen\nstate 9\nstoreOpen\nstate 10\nstoreOpen\nstate 11\nstoreOpen\nstate 12", u"Character||\nNotes||\nParenthetical||\nPageBreak||\n12 General||"},
    {"Idle and what is no state leave the type", u"state 4\nstate 0\nstoreOpen\nstate 4\nstate 1\nstoreOpen\nstate 12\nstate 13", u"Scene Heading||\nScene Heading||\n13 General||"},
    {"what is stored leaves the state", u"state 2\nstoreOpen\naction a\nstate 2\nstoreOpen\ncentred b", u"Action||\nUndefined||a\nAction||\n2 Action|c|b"},
    {"the same state closes text, Idle does not", u"open a\nstate 2\nstate 2\nopen b\nstate 0\nopen c\nstate 9", u"Action||a\nAction||b\n9 Notes||c"},
    {"dialogue from Idle takes the open text", u"open z\ndialogue a (b) c", u"Dialogue||za \nParenthetical||b\nDialogue|| c\n3 Dialogue||"},
    {"dialogue goes on in an open element", u"state 3\nopen z\ndialogue a", u"Dialogue||za\n3 Dialogue||"},
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
    {"one line feed of action is cut", u"store Action||a\\n\\n\nstore Action||b\nstoreNull\nstore Notes||c\\n", u"Action||a\\n\nAction||b\nNotes||c\\n\n0 Undefined||"},
    {"blanks go in front of a line", u"trim  \t a ", u"0 Undefined||W'a' S' '"},
    {"a line of blanks", u"trim  ", u"0 Undefined||"},
    {"boneyards", u"buffer /**//*a *\\n**//*/ b\nread 1", u"Boneyard||\nBoneyard||a *\\n*\nBoneyard||/ b\n0 Undefined||"},
    {"boneyard closes the open text", u"state 9\nopen z\nbuffer /*x*/\nread 1", u"Notes||z\nBoneyard||x\n9 Notes||"},
    {"entries with one key", u"entry A1\nentry A2", u"@A|2\n@A|1\n0 Undefined||"},
    {"start in front of open text", u"state 9\nopen z\ninitParser", u"0 Notes||z"},
    {"main loop takes what is open", u"state 9\nopen z\nbuffer a b\\n\nparseBuffer", u"Action||za b\n2 Undefined||"},
    {"main loop at the end of the input", u"parse c\nbuffer a b\\n\nparseBuffer", u"Undefined||\n0 Undefined||"},
};

// What the steps of a caller read, and the current token, position and tokenStart behind it.
const Row readingRows[] = {
    {"new", u"next", u"65535 (W'' -1 -1)"},
    {"at the end", u"read 3", u"E'' E'' E'' (E'' 2 1)"},
    {"each token", u"buffer ab cd\nread 3", u"W'ab' S' ' W'cd' (W'cd' 4 2)"},
    {"rewind", u"buffer ab====c\nread 2\nrewind\nread 2", u"W'ab' P'===' P'===' W'c' (W'c' 6 5)"},
    {"rewind behind a boneyard", u"buffer a/*x*/b\nread 2\nrewind\nread 1", u"W'a' W'b' W'b' (W'b' 6 5)"},
    {"another buffer", u"buffer one two\nread 1\nbuffer x yz12 w\nread 2", u"W'one' W'z12' S' ' (S' ' 6 5)"},
    {"shorter buffer", u"buffer one two\nread 3\nbuffer x\nread 1", u"W'one' S' ' W'two' E'' (E'' 7 6)"},
    {"in the middle of a mark", u"buffer a**b\nposition 1\nread 2", u"W'*' W'b' (W'b' 3 2)"},
    {"far behind the end", u"buffer a\nposition 70\nread 1\nnext", u"E'' 65535 (E'' 71 70)"},
    {"characters", u"buffer ab\nnext\ngetch\ngetch\ngetch", u"97 97 98 65535 (W'' 2 -1)"},
    {"white space", u"buffer  \t\\n\r a\nskip", u"(W'' 2 -1)"},
    {"white space at the end", u"buffer  \\n\nskip", u"(W'' 1 -1)"},
    {"no white space", u"buffer a \nskip", u"(W'' -1 -1)"},
    {"back to the start", u"parse Title: a\\n\\nb c\\n\ninitParser", u"(E'' -1 13)"},
    {"end of a parse", u"parse a b\\n", u"(E'' 3 3)"},
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
            for (const QString &text :
                 (textOf(row.accepted) + u'|' + textOf(row.refused)).split(u'|')) {
                if (row.test(text))
                    passed += text;
            }
            QCOMPARE(passed.join(u'|'), textOf(row.accepted));
        }
    }
    void tokens_data() { addRows(tokenRows); }
    void tokens()
    {
        check([](const QString &text) { return dump(lineOf(text)); });
    }
    void scripts_data() { addRows(scriptRows); }
    void scripts() { check(script); }
    void steps_data() { addRows(stepRows); }
    void steps()
    {
        check([](const QString &steps) { return Caller(steps).stored(); });
    }
    void reading_data() { addRows(readingRows); }
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
