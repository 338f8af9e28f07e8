// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "parser/qfnfastparser.h"

#include "dump.h"

namespace {

// clang-format off
const Row tokenRows[] = {
    {"blanks and exclamation marks stand alone", u"Hi!! !!a\t b", u"W'Hi!!' S' ' W'!' W'!' W'a' S'\\t' S' ' W'b'"},
    {"lone CR ends nothing", u"x\r\n\na\rb\r", u"W'x' N'\\r\\n' N'\\n' W'a\\rb\\r'"},
    {"separators", u"a:b#c^(d)>e<f_g", u"W'a' W':' W'b' W'#' W'c' W'^' W'(' W'd' W')' W'>' W'e' W'<' W'f' W'_' W'g'"},
    {"marks of two", u"a***b*c**[[d]]]", u"W'a' D'**' W'*' W'b' W'*' W'c' D'**' O'[[' W'd' C']]' W']'"},
    {"three equals signs are a mark", u"a==b=====c=", u"W'a' W'=' W'=' W'b' P'===' W'c' W'='"},
    {"run of dots; slash, bracket in a word", u"a...b./A p/q[x]", u"W'a' W'...' W'b' W'.' W'/A' S' ' W'p/q[x]'"},
    {"boneyard leaves no token", u"a //* x */b", u"W'a' S' ' W'/' W'b'\nBoneyard|| x "},
    {"boneyards", u"/**//*a *\n**//*/ b", u"\nBoneyard||\nBoneyard||a *\\n*\nBoneyard||/ b"},
};

// A test and its answer, then inputs that all give it.
const Row lineRows[] = {
    {"keywords", u"key 1", u"EXT|INT|EST|INT./EXT|INT/EXT|I/E|i/e|Int|.h|.1|.\u00e9"},
    {"no keywords", u"key 0", u"|I|E|.|..|.-|INT.|INTERIOR| INT"},
    {"two blanks at the end", u"double 1", u"JOHN  |JOHN \t|  "},
    {"fewer blanks at the end", u"double 0", u"JOHN |  JOHN| |"},
    {"heading", u"line 1", u"INT A|int a|I/E a|INT |EST\ta|INT. a|EXT.\ta|INT/EXT. a|INT. (a)|INT.A|INT.1|INT/**/A"},
    {"two keywords", u"line 1", u"INT.//*x*/EXT a|INT.//*x*/EXT. a|INT/*x*///*x*/EXT a"},
    {"two keywords, no blank", u"line 0", u"INT.//**/EXT:|INT.//**/EXT.a|INT.//**/A a"},
    {"other token behind", u"line 0", u"INT: a|INT... a|INT**a**|INT(a)|INT.#1|INT./EXT a|INT.-a"},
    {"no keyword in front", u"line 0", u"I a|E. a|INTERIOR a|INT-DAY|.a|**INT. a**| INT. a|Estate"},
    {"line ends too early", u"line 0", u"|INT|INT.|INT.//**/|INT.//**/EXT|INT.//**/EXT."},
};

const Row driverRows[] = {
    // The title page
    {"keys in any case", u"TITLE:a\ncredit:b\nSource:c\nContact:d\nNotes:e\nCopyright:f\n\n.g\n\n",
     u"@Contact|d\n@Copyright|f\n@Notes|e\n@Source|c\n@TITLE|a\n@credit|b\nScene Heading||g"},
    {"newer entry first", u"Title: \n\n A\n B\nAuthor: C\nAuthor: D\n", u"@Author|D\\n\n@Author|C\n@Title|A\\n B"},
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
    {"capitals and TO:", u" A TO:\n\n**TO:**\n\n", u"Transition|| A TO:\nTransition|b|TO:\nTransition||"},
    {"not quite a transition", u"Cut to:\n\nTO: \n\nTHE END\n\n", u"Action||Cut to:\\nTO: \\nTHE END"},
    {"emphasis alone gives nothing", u"**\na b\n\nC\n*_*\nd\n", u"Action||a b\nCharacter||C\nDialogue||d"},
    {"letters that change", u"\u0149\nx\n\n\u01c5\ny\n\nA\u00dfE\nz\n", u"Action||\u0149x\\n\u01c5y\\nA\u00dfEz"},
    {"split pair of a small letter", u"\xD801/*x*/\xDC28\ny\n", u"Boneyard||x\nAction||\U00010428y"},
    {"a lone surrogate keeps the letter behind it from having capitals", u"\xD801" u"b\nx\n", u"Character||\xD801" u"b\nDialogue||x"},
    {"lone surrogates are kept", u"\xDC28 \xD801\n\xD801\n", u"Character||\xDC28 \xD801\nDialogue||\xD801"},
};
// clang-format on

QList<QFnToken> tokensOf(const QString &text, QFnFastParser *parser)
{
    QList<QFnToken> tokens;
    parser->buffer = text;
    parser->initParser();
    while (parser->nextToken().kind != QFnToken::EndOfInput)
        tokens += parser->currentToken;
    return tokens;
}

QString tokensIn(const QString &text)
{
    QFnFastParser parser(nullptr);
    QStringList list;
    for (const QFnToken &token : tokensOf(text, &parser))
        list += u".WD.P.N.SOC"_s.mid(token.kind, 1) + u'\'' + escaped(token.text) + u'\'';
    const QString stored = dump(*parser.document);
    return list.join(u' ') + u"\n"_s.left(stored.size()) + stored;
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

} // namespace

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

    void lineTests_data() { addRows(lineRows); }
    void lineTests()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        for (const QString &text : expected.split(u'|')) {
            QFnFastParser parser(nullptr);
            QList<QFnToken> line = tokensOf(text, &parser);
            const bool given = input.startsWith(u'k')   ? parser.isSceneHeadingToken(text)
                               : input.startsWith(u'd') ? parser.endsWithDblSpace(&line)
                                                        : parser.isSceneHeadingLine(&line);
            QVERIFY2(given == input.endsWith(u'1'), qUtf8Printable(text));
        }
    }

    void secondParseIsLikeTheFirst()
    {
        QFnFastParser parser(nullptr);
        QVERIFY(parser.parse(u"Title: A\n\nJOHN\nHi (x) **a /* b"_s));
        parser.currentElement = elementOf(u"Notes|bc|left"_s);
        QVERIFY(parser.parse(u"A\n\n**b\0** c\n\n.d\n\n"_s));
        QCOMPARE(dump(*parser.document),
                 u"Action||A\nAction|b|b\0\nAction|| c\nScene Heading||d\nUndefined||"_s);
    }

    void lineParsersThatNoTextLeadsTo()
    {
        QFnFastParser parser(nullptr);
        QList<QFnToken> line = tokensOf(u"a **b** [[n]]\tc"_s, &parser);
        parser.appendElement(nullptr);
        parser.currentElement.text = u"z"_s; // leaving the state Idle does not store it
        parser.parseGeneralLine(&line);
        parser.parseSceneHeading(&line); // of the empty line that is left
        QCOMPARE(dump(*parser.document), u"General||za \nGeneral|b|b\nGeneral|| \nNotes||n\n"
                                         u"General||\\tc\nScene Heading||"_s);
    }
};

QTEST_GUILESS_MAIN(ParserTest)
#include "tst_parser.moc"
