// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/exporting.h"

#include "bridge/ZemFountain.h"
#include "host/records.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"
#include "writer/qfnwriter.h"

#include <QtCore/QBuffer>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

#include <iterator>

namespace {

/// How a kind of paragraph is laid out: the empty blocks in front of it, by what stands above, and
/// the mark that the text gets.
///
/// An empty block is a line end of the file. A form that starts with a line end of its own needs
/// one less for the same blank line.
struct Layout
{
    int apart;          ///< behind all but the next two
    int belowCue;       ///< nothing parts a cue from the line below it
    int inSpeech;       ///< behind dialogue and parentheticals
    QLatin1String mark; ///< written without a look at the text, unlike the mark of the writer
};

constexpr QLatin1String none;

// A row for each type, in the order of the enumeration.
constexpr Layout layouts[] = {
    {1, 1, 1, none},                // Undefined
    {1, 0, 1, none},                // Action
    {1, 1, 1, none},                // Boneyard
    {1, 1, 1, none},                // Character
    {2, 2, 2, none},                // Notes
    {2, 1, 1, none},                // Dialogue
    {1, 0, 1, none},                // PageBreak
    {2, 1, 1, none},                // Parenthetical
    {1, 1, 1, none},                // SceneHeading
    {2, 2, 2, QLatin1String("# ")}, // SectionHeading
    {2, 2, 2, QLatin1String("=")},  // Synopsis
    {2, 2, 2, QLatin1String(">")},  // Transition
    {1, 1, 1, none},                // General
};
static_assert(std::size(layouts) == QFnElement::General + 1, "a layout for every type");

bool isSpeech(QFnElement::Type type)
{
    return type == QFnElement::Dialogue || type == QFnElement::Parenthetical;
}

constexpr QLatin1String emphasisMarks[] = {QLatin1String("_"), QLatin1String("*"),
                                           QLatin1String("**")};

/// The text of a block with the marks of its emphasis. They open and close alike, and nest where
/// they can.
QString emphasisedText(const QTextBlock &block)
{
    QString text;
    QList<int> open; // marks by index, in the order of opening
    const auto setStyle = [&](const QTextCharFormat &format) {
        const bool wanted[] = {format.underlineStyle() != QTextCharFormat::NoUnderline,
                               format.fontItalic(), format.fontWeight() >= QFont::Bold};
        for (int i = open.size() - 1; i >= 0; --i) {
            if (!wanted[open.at(i)])
                text += emphasisMarks[open.takeAt(i)];
        }
        for (int mark = 0; mark < int(std::size(wanted)); ++mark) {
            if (wanted[mark] && !open.contains(mark)) {
                text += emphasisMarks[mark];
                open.append(mark);
            }
        }
    };
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        setStyle(it.fragment().charFormat());
        text += it.fragment().text();
    }
    setStyle(QTextCharFormat());
    return text;
}

bool isCentred(const QTextBlock &block)
{
    return block.blockFormat().alignment() & Qt::AlignHCenter;
}

/// Whether \a line, alone between blank lines, is read as action with this text.
bool readsAsAction(const QString &line, const QString &text)
{
    QFnFastParser parser(nullptr);
    parser.parse(line + QLatin1String("\n\n"));
    QString read;
    for (const QFnElement *element : parser.document->elements) {
        if (element->type != QFnElement::Action)
            return false;
        read += element->text;
    }
    return read == text;
}

bool isComment(const QTextBlock &block)
{
    return block.isValid() && Host::typeOf(block) == QFnElement::Boneyard;
}

/// The text of a block in the form in which it reads back as \a type.
QString markedText(const QTextBlock &block, QFnElement::Type type)
{
    switch (type) {
    case QFnElement::Action:
        if (isCentred(block))
            return QLatin1String("> ") + emphasisedText(block) + QLatin1String(" <");
        return emphasisedText(block);
    case QFnElement::Notes:
        return QLatin1String("[[") + block.text() + QLatin1String("]]");
    case QFnElement::Boneyard:
        // A comment of several lines is as many blocks.
        return (isComment(block.previous()) ? QString() : QStringLiteral("/*")) + block.text()
               + (isComment(block.next()) ? QString() : QStringLiteral("*/"));
    case QFnElement::Synopsis:
    case QFnElement::Transition:
        return layouts[type].mark + emphasisedText(block);
    default:
        return layouts[type].mark + block.text();
    }
}

/// The copy of a document under construction, block by block.
class Copy
{
public:
    explicit Copy(QTextDocument *document)
        : m_cursor(document)
    {
        // One edit: to follow each change of a long line costs time that grows with the line.
        m_cursor.beginEditBlock();
    }

    void append(const QTextBlock &block)
    {
        const QFnElement::Type type = Host::typeOf(block);
        if (block.length() == 1 && type != QFnElement::Boneyard) {
            ++m_empties;
            return;
        }
        const bool title = Host::recordOf(block).name == Host::titlePageName();
        QString text = markedText(block, type);
        // The parser has a comment in a line of action in front of all of that line.
        const bool behindComment = type == QFnElement::Action && m_above == QFnElement::Boneyard
                                   && m_empties == 0 && m_commentInAction;
        if (!Host::continuesLine(block) && !behindComment) {
            const bool underCue = m_above == QFnElement::Character;
            if (type == QFnElement::Action && !isCentred(block)
                && (underCue || !readsAsAction(text, block.text())))
                text.prepend(QLatin1Char('!'));
            // A line that begins with a note and goes on is one of action.
            const QTextBlock next = block.next();
            const QTextBlock line =
                Host::continuesLine(next) && type == QFnElement::Notes ? next : block;
            const bool goesOn = (title && m_title) || (type == m_above && isComment(block));
            if (type == QFnElement::Notes && m_empties > 0)
                --m_empties; // It has done no more than keep the note out of the line above.
            open(line.blockFormat(), goesOn ? 0 : blanksAbove(Host::typeOf(line)));
        }
        m_cursor.insertText(text);
        if (type == QFnElement::Boneyard && m_above != QFnElement::Boneyard)
            m_commentInAction = m_above == QFnElement::Action;
        m_above = type;
        m_title = title;
        m_empties = 0;
    }

    /// The line ends behind the last line: most kinds need the blank line below, a cue must not
    /// have it.
    void finish()
    {
        const bool speech = m_above == QFnElement::Character || isSpeech(m_above);
        insertBlocks(keptEmpties() + (speech ? 1 : 2), QTextBlockFormat());
        m_cursor.endEditBlock();
    }

private:
    /// Empty blocks behind action are blank lines in its text.
    int keptEmpties() const { return m_above == QFnElement::Action ? m_empties : 0; }

    int blanksAbove(QFnElement::Type type) const
    {
        const Layout &layout = layouts[type];
        if (m_above == QFnElement::Character)
            return layout.belowCue;
        if (isSpeech(m_above))
            return layout.inSpeech;
        return layout.apart + keptEmpties();
    }

    void open(const QTextBlockFormat &format, int blanks)
    {
        if (m_first) {
            m_cursor.setBlockFormat(format);
            m_first = false;
            return;
        }
        insertBlocks(blanks, QTextBlockFormat());
        insertBlocks(1, format);
    }

    void insertBlocks(int count, const QTextBlockFormat &format)
    {
        for (int i = 0; i < count; ++i)
            m_cursor.insertBlock(format, QTextCharFormat());
    }

    QTextCursor m_cursor;
    QFnElement::Type m_above = QFnElement::Undefined;
    int m_empties = 0; ///< since the block above
    bool m_first = true;
    bool m_title = false;           ///< The block above is one of the title page.
    bool m_commentInAction = false; ///< Action stands above the last comment.
};

} // namespace

QByteArray Host::exportScript(const QTextDocument &document)
{
    QTextDocument laidOut;
    laidOut.setUndoRedoEnabled(false);
    Copy copy(&laidOut);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        copy.append(block);
    copy.finish();

    // ZemFountain::writeFile() in its two steps: it would not notice a write that fails, and the
    // bytes are to go into the file all at once or not at all.
    QFnDocument script(nullptr);
    ZemFountain::toFountainDocument(laidOut, records(), &script, nullptr);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QFnWriter(&buffer).write(&script);
    // The writer starts most forms with a line end. A title page must be on the first line.
    QByteArray bytes = buffer.data();
    return bytes.startsWith('\n') ? bytes.mid(1) : bytes;
}
