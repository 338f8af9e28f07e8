// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNFASTPARSER_H
#define QFNFASTPARSER_H

#include "model/qfnelement.h"
#include "model/zemfountain_export.h"

#include <QtCore/QChar>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <vector>

class QFnDocument;

namespace Zem {
class Line;
struct Token;
} // namespace Zem

/// The smallest piece of Fountain text that the parser looks at. A plain value.
///
/// Punctuation has no kinds of its own: "#", ":", "(" and the like are words of one character,
/// told by their text.
class QFnToken
{
public:
    /// What a token is. The numbers are fixed; 0, 3 and 5 are not used.
    enum Kind : int {
        Word = 1,          ///< A run of word characters, one separator, a run of dots or one "!".
        DoubleStar = 2,    ///< "**"
        PageBreakMark = 4, ///< Three or more "=" in a row. The text is always "===".
        NewLine = 6,       ///< "\n" or "\r\n", as read.
        EndOfInput = 7,    ///< The end of the text. Has no text.
        Space = 8,         ///< One blank or one tab. A run of blanks is a token for each.
        OpenNote = 9,      ///< "[["
        CloseNote = 10     ///< "]]"
    };

    Kind kind = Word; ///< Word after construction.
    QString text;     ///< The characters of the token, unchanged in case.
};

/// Turns Fountain text into a QFnDocument, in one pass and without ever refusing a text.
///
/// parse() is the one entry point that a caller needs. The other operations are the steps of the
/// parse, from the tokens up to the parsers for each kind of line. They are public for callers that
/// drive them one by one. A line is then a list of tokens without its NewLine, which the parser of
/// its kind consumes from the front and leaves empty; the tests of a line do not change it.
///
/// What this reading of the format holds that a reader might not expect: a title-page entry is
/// taken at the start of any line, anywhere in the text; two adjacent lines of action are joined
/// with nothing between them; a heading loses its keyword ("INT. HOUSE" gives "HOUSE"); and
/// emphasis and notes count in action, synopses and transitions only.
///
/// Capitals are what QString::toUpper() makes of a line. It differs in one point: Qt 6 gives
/// capitals to a letter behind half of a surrogate pair, and Qt 5 does not.
///
/// Used by one thread at a time. The cost grows with the length of the text and nothing else.
class ZEMFOUNTAIN_EXPORT QFnFastParser : public QObject
{
    Q_OBJECT

public:
    /// What the element under construction is being built as. The numbers are fixed; 1 is not used.
    enum ParserState : int {
        Idle = 0,       ///< Nothing in particular. Text that stands there waits for the next state.
        InAction = 2,   ///< Action, over any number of lines.
        InDialogue = 3, ///< A speech, from its cue to the next blank line.
        InSceneHeading = 4,   ///< A scene heading. Ends with its line, as all below do.
        InSectionHeading = 5, ///< A section heading.
        InSynopsis = 6,       ///< A synopsis.
        InTransition = 7,     ///< A transition.
        InCharacter = 8,      ///< A cue.
        InNotes = 9,          ///< A note, up to its closing mark.
        InParenthetical = 10, ///< A parenthetical, up to its closing mark.
        InPageBreak = 11,     ///< A page break.
        InGeneral = 12        ///< A line that a caller hands to parseGeneralLine().
    };

    /// A parser with an empty document, owned by \a parent, which may be null.
    explicit QFnFastParser(QObject *parent);
    ~QFnFastParser() override;

    /// \name The parse as a whole
    /// @{

    /// Parses \a text into document and returns true, whatever the text holds.
    ///
    /// The document always ends in a closing element, often an Undefined or a Dialogue one with no
    /// text. A second call deletes the elements of the first and gives what a new parser would.
    bool parse(const QString &text);

    /// The main loop of parse(), over the text in buffer and with currentToken and currentElement
    /// as they stand: a parser that has been at the end of its input has to go through parse().
    /// Gives true always.
    bool parseBuffer();

    /// Goes back to the start of buffer, in state Idle, and clears document. tokenStart,
    /// currentElement and currentToken are left alone.
    void initParser();
    /// @}

    /// \name The element under construction
    /// @{

    /// Stores currentElement if \a newState ends a stretch of text: it is stored when state is not
    /// Idle and its text is not empty. Then enters \a newState and gives currentElement the type of
    /// that state; Idle leaves the type alone. Leaving Idle never stores anything.
    void changeParserState(QFnFastParser::ParserState newState);

    /// Adds \a element to document, which owns it from here on. Null is ignored. An Action element
    /// first loses one trailing line feed, and only one.
    void appendElement(QFnElement *element);

    /// Stores a copy of currentElement, with an empty text too, and clears currentElement. state
    /// does not change, so a caller that goes on with the same kind has to set the type again.
    void appendCurrentElement();
    /// @}

    /// \name The title page
    /// @{

    /// Adds an entry to the title page of document. An older entry with the same key stays.
    void appendTitlePageElement(QString key, QString value);

    /// Whether \a key is a word that opens a title-page entry, in upper case and exactly.
    static bool isTitlePageKey(QString key);
    /// @}

    /// \name Characters and tokens
    /// @{

    /// Moves position on by one, also past the end, and gives the character there. At and past the
    /// end of buffer that is the end-of-input character, 65535.
    QChar getch();

    /// The character that getch() would give. Changes nothing.
    QChar nextChar() const;

    /// Whether the character is a blank, a tab or a line feed. A carriage return is none.
    static bool isWhitespace(const QChar &character);

    /// Moves position past the white space that follows, line feeds included.
    void skipWhitespaces();

    /// Removes the Space tokens at the front of \a tokens.
    void skipWhitespaces(QList<QFnToken> *tokens);

    /// Reads the next token into currentToken and returns a copy of it.
    ///
    /// Boneyards ("/*" to "*/") are no tokens: each is stored as an element when it is met, behind
    /// the open text of currentElement, and the text around it stays one line. One that is not
    /// closed takes all the rest of the text. A character 65535 in the text reads as its end.
    QFnToken nextToken();
    /// @}

    /// \name Tests of a line
    /// @{

    /// Whether \a text opens a scene heading: a keyword in any case ("INT", "EXT", "EST", "I/E",
    /// "INT/EXT", "INT./EXT"), or a dot with a letter or digit behind it.
    static bool isSceneHeadingToken(const QString &text);

    /// Whether the line is a scene heading: a keyword at its very front, perhaps a dot, and then a
    /// blank or text that starts with a letter or digit. After a "/" of its own, a second keyword,
    /// perhaps a dot, and a blank must follow. A line that ends before that is none.
    static bool isSceneHeadingLine(QList<QFnToken> *tokens);

    /// Whether the line ends in two Space tokens, which keeps capitals from being a cue.
    bool endsWithDblSpace(QList<QFnToken> *tokens) const;
    /// @}

    /// \name Parsers for the text of a line
    /// @{

    /// Moves the line into currentElement. Runs of emphasis marks cut it into one element for each
    /// styled stretch, and notes become elements of their own. The last stretch stays open.
    ///
    /// Stretches take the type that currentElement has on entry, and \a alignment from the first
    /// run of marks or the first text behind a note on, where the state of entry returns too. With
    /// Qt::AlignHCenter in state InAction the blanks at both ends of the line go. \a token is not
    /// read. A note that ends the line leaves the state Idle.
    void parseText(QList<QFnToken> *tokens, QFnToken *token, Qt::Alignment alignment);

    /// Moves the line into currentElement as parseText() does, in the state that stands. No line of
    /// parse() comes here: notes are found inside other lines.
    void parseNotes(QList<QFnToken> *tokens);

    /// Stores the line, its mark taken off, as Synopsis elements. None if there is no text.
    void parseSynopsis(QList<QFnToken> *tokens);

    /// Stores the line as General elements, none if there is no text. No line of parse() comes
    /// here.
    void parseGeneralLine(QList<QFnToken> *tokens);

    /// Stores the line, its mark taken off, as Transition elements. None if there is no text.
    void parseTransitionLine(QList<QFnToken> *tokens);

    /// Adds the line to the open Action element, with nothing between it and the line before. A
    /// line of another alignment (\a centered or not) closes that element and opens a new one.
    void parseActionLine(QList<QFnToken> *tokens, bool centered);

    /// Stores the line as a Dialogue element, cut at each "(" up to the next ")", which becomes a
    /// Parenthetical without the two marks, with an empty text too. Emphasis marks and notes are
    /// plain text here. Dialogue without text is not stored.
    void parseDialogueLine(QList<QFnToken> *tokens);

    /// Stores the line, trimmed, as a Character element, with the word "CONT'D" in lower case. An
    /// empty one is stored too. Dialogue follows.
    void parseCharacter(QList<QFnToken> *tokens);

    /// Stores the line, without keyword, as a SceneHeading. Text between two "#" (or from a "#" to
    /// the end of the line) becomes the scene number. A heading without text is stored too.
    void parseSceneHeading(QList<QFnToken> *tokens);

    /// Stores the line as a SectionHeading. The "#" at its front give the depth. A line of
    /// marks alone stores nothing, and leaves its depth to the next element that is stored.
    void parseSectionHeading(QList<QFnToken> *tokens);
    /// @}

    QString buffer;        ///< The whole text. Empty after construction.
    QFnDocument *document; ///< The result. A child of this parser, and valid as long as it lives.
    int position;          ///< Index of the last UTF-16 unit consumed, -1 before the first.
    /// What position was before the latest token, or behind the boneyard in front of it. Setting
    /// position to it makes nextToken() read the same token again. -1 after construction.
    int tokenStart;
    ParserState state;         ///< Idle after construction.
    QFnElement currentElement; ///< The element under construction. A default one at first.
    QFnToken currentToken;     ///< What nextToken() last read. A Word without text at first.

private:
    Q_DISABLE_COPY(QFnFastParser)

    Zem::Token parseLine(std::vector<Zem::Token> *lineTokens, bool atBlockStart);
    Zem::Token readTitlePageEntry(const Zem::Token &keyToken);
    bool titlePageValueEnds();

    void dispatchLine(Zem::Line line, bool atBlockStart, bool blankLineFollows);
    void dispatchOneLineBlock(Zem::Line line, int firstIndex);

    Zem::Token readToken();
    void readBoneyard();

    void closeStretch();
    void takeText(Zem::Line line, Qt::Alignment alignment);
    void takePlainText(Zem::Line *line);
    void takeNote(Zem::Line *line);
    void takeStyledLine(const Zem::Line &line, ParserState lineState);
    void takeActionLine(const Zem::Line &line, bool centered);
    void takeDialogueLine(Zem::Line line);
    void takeParenthetical(Zem::Line *line);
    void takeCharacter(const Zem::Line &line);
    void takeSceneHeading(Zem::Line line);
    void takeSectionHeading(Zem::Line line);
};

#endif
