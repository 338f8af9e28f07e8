// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// The fuzz target: what must hold for every text, on each road through the library.

#include "bridge/ZemFountain.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"
#include "reading.h"
#include "writer/qfnwriter.h"

#include <QtCore/QBuffer>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <sanitizer/lsan_interface.h>

namespace {

void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

// Parse

bool areEqual(const QFnStyle &a, const QFnStyle &b)
{
    return a.bold == b.bold && a.italic == b.italic && a.underline == b.underline
           && a.alignment == b.alignment;
}

bool areEqual(const QFnElement &a, const QFnElement &b)
{
    return a.type == b.type && a.text == b.text && a.sectionDepth == b.sectionDepth
           && a.sceneNumber == b.sceneNumber && areEqual(a.style, b.style);
}

bool areEqual(const QFnDocument &a, const QFnDocument &b)
{
    return a.titlePage == b.titlePage
           && std::equal(a.elements.cbegin(), a.elements.cend(), b.elements.cbegin(),
                         b.elements.cend(),
                         [](QFnElement *x, QFnElement *y) { return areEqual(*x, *y); });
}

void checkElements(const QFnDocument &document)
{
    require(!document.elements.isEmpty(), "a document ends in a closing element");
    const QFnElement *last = document.elements.last();
    require(last->text.isEmpty() || last->type == QFnElement::Action,
            "the closing element is empty or action");
    for (const QFnElement *element : document.elements) {
        require(element->type != QFnElement::General, "no text gives a general element");
        require(element->type != QFnElement::Undefined || element->text.isEmpty(),
                "text has a type");
        require(element->type == QFnElement::SceneHeading || element->sceneNumber.isEmpty(),
                "only a heading has a scene number");
        require(element->type != QFnElement::PageBreak || element->text.isEmpty()
                    || element->text == QLatin1String("==="),
                "a page break is its mark");
    }
}

/// Whether all characters of \a part are in \a whole, each as often as here, in any order.
bool isWithin(QString part, QString whole)
{
    std::sort(part.begin(), part.end());
    std::sort(whole.begin(), whole.end());
    return std::includes(whole.cbegin(), whole.cend(), part.cbegin(), part.cend());
}

bool isInOrderWithin(const QString &part, const QString &whole)
{
    int at = -1;
    return std::all_of(part.cbegin(), part.cend(),
                       [&](QChar c) { return (at = whole.indexOf(c, at + 1)) >= 0; });
}

bool areInOrderWithin(const QStringList &words, const QString &whole)
{
    int at = 0;
    return std::all_of(words.cbegin(), words.cend(), [&](const QString &word) {
        const int found = whole.indexOf(word, at);
        at = found + word.size();
        return found >= 0;
    });
}

/// Runs of "=" count as one mark, and U+FFFF as none.
QString comparable(const QString &text)
{
    QString kept;
    for (const QChar c : text) {
        const bool goesOn = c == QLatin1Char('=') && kept.endsWith(c);
        if (!goesOn && c != QChar(ushort(65535)))
            kept += c;
    }
    return kept;
}

/// That nothing of the text is lost, invented or out of order: the rule of Reading, both ways.
void checkWords(const QString &text, const QFnDocument &document)
{
    QStringList boneyards;
    const QString visible = withoutBoneyards(text, &boneyards);
    require(comparable(joinedTokens(text)) == comparable(visible), "the tokens are the text");

    const Reading reading(text);
    require(document.titlePage == reading.titlePage, "the title page holds the entries");

    QStringList stored;
    QString inOrder;
    QString all;
    for (const QFnElement *element : document.elements) {
        if (element->type == QFnElement::Boneyard) {
            stored.append(element->text);
        } else {
            inOrder += content(element->text);
            all += content(element->text + element->sceneNumber);
        }
    }
    require(stored == boneyards.mid(0, stored.size()), "boneyards are whole and in order");
    require(stored.size() == boneyards.size() || text.contains(QChar(ushort(65535))),
            "no boneyard is lost");
    require(areInOrderWithin(reading.words, all), "words come out in order");
    require(isWithin(reading.characters, all), "no character is lost");

    const QString given = content(visible);
    require(isInOrderWithin(inOrder, given), "nothing is invented or out of order");
    for (auto entry = document.titlePage.cbegin(); entry != document.titlePage.cend(); ++entry)
        all += content(entry.key() + entry.value());
    require(isWithin(all, given), "no character comes out twice");
}

void parseAndCheck(const QString &text, QFnFastParser *parser)
{
    require(parser->parse(text), "every text parses");
    checkElements(*parser->document);
    checkWords(text, *parser->document);

    QFnFastParser other(nullptr);
    require(other.parse(text), "a new parser parses");
    require(areEqual(*parser->document, *other.document), "a new parser agrees");
    require(other.parse(text), "a used parser parses");
    require(areEqual(*parser->document, *other.document), "a used parser agrees");
}

// Write

QString textInForm(const QFnElement &element)
{
    if (element.text.isEmpty())
        return QStringLiteral("\n");
    if (element.type == QFnElement::Character)
        return element.text.toUpper();
    if (element.type == QFnElement::PageBreak)
        return QStringLiteral("===");
    if (element.type == QFnElement::Notes)
        return QString(element.text).replace(QLatin1String("\n\n"), QLatin1String("\n  \n"));
    return element.text;
}

/// That \a bytes are the \a texts in order, with nothing but \a marks around them.
void checkWritten(const QByteArray &bytes, const QStringList &texts, const char *marks)
{
    constexpr int marksOfForm = 8; // the most that stand around one text
    const auto isMark = [marks](char c) { return c && std::strchr(marks, c); };
    // In front QString takes off a byte order mark, and without a size Qt 5 stops at a zero.
    const QByteArray guarded = 'x' + bytes;
    require(QString::fromUtf8(guarded.constData(), int(guarded.size())).toUtf8() == guarded,
            "what is written is UTF-8");

    int at = 0;
    int textSize = 0;
    for (const QString &text : texts) {
        const QByteArray wanted = text.toUtf8();
        const int found = bytes.indexOf(wanted, at);
        require(found >= 0, "every text is written");
        require(std::all_of(bytes.cbegin() + at, bytes.cbegin() + found, isMark),
                "only marks stand between texts");
        at = found + wanted.size();
        textSize += wanted.size();
    }
    require(std::all_of(bytes.cbegin() + at, bytes.cend(), isMark), "only marks follow");
    require(bytes.size() <= textSize + marksOfForm * texts.size(), "no mark is written twice");
}

void writeAndCheck(const QFnDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QFnWriter writer(&buffer);
    require(writer.write(&document), "every document is written");
    QStringList texts;
    for (const QFnElement *element : document.elements)
        texts.append(textInForm(*element));
    checkWritten(buffer.data(), texts, "\n[]()#=>.");

    QFnFastParser parser(nullptr);
    require(parser.parse(QString::fromUtf8(buffer.data())), "what is written parses");
}

void writeStyledAndCheck(const QFnDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QFnWriter writer(&buffer);
    QStringList texts;
    for (const QFnElement *element : document.elements) {
        writer.writeElementText(element);
        writer.finalizeLastElementStyle();
        texts.append(element->text.toUpper());
    }
    checkWritten(buffer.data(), texts, "_*<>");
}

// Render and export

/// A block of rich text as it must be.
using Block = QFnElement;

void addText(QString text, QList<Block> *blocks)
{
    // No regular expression: it takes no text with lone surrogates.
    const QChar lineEnds[] = {QLatin1Char('\r'), QChar::ParagraphSeparator, QChar(0xFDD0),
                              QChar(0xFDD1)};
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const QChar lineEnd : lineEnds)
        text.replace(lineEnd, QLatin1Char('\n'));
    const QStringList lines = text.split(QLatin1Char('\n'));
    blocks->last().text += lines.first();
    for (int i = 1; i < lines.size(); ++i) {
        blocks->append(blocks->last());
        blocks->last().text = lines.at(i);
    }
}

QList<Block> blocksOf(const QFnDocument &document)
{
    QList<Block> blocks = {Block()};
    for (auto entry = document.titlePage.cbegin(); entry != document.titlePage.cend(); ++entry)
        addText(entry.key() + QLatin1Char(':') + entry.value(), &blocks);
    if (!document.titlePage.isEmpty())
        blocks.append(Block());
    for (const QFnElement *element : document.elements) {
        const bool takesOver = blocks.size() == 1 && blocks.last().text.isEmpty();
        if (!takesOver)
            blocks.append(Block());
        blocks.last().type = element->type;
        blocks.last().style = element->style;
        const bool parenthetical = element->type == QFnElement::Parenthetical;
        addText(parenthetical ? QLatin1Char('(') + element->text + QLatin1Char(')') : element->text,
                &blocks);
    }
    return blocks;
}

/// A record for each type under each of its names, recognised by a property of the block.
QList<ZEMScriptElement> makeRecords()
{
    QList<ZEMScriptElement> records;
    for (int type = QFnElement::Action; type <= QFnElement::General; ++type) {
        ZEMScriptElement record;
        const QString name = QFnElement::toString(QFnElement::Type(type));
        record.blockFormat.setProperty(QTextFormat::UserProperty, type);
        record.name = QString(name).remove(QLatin1Char(' '));
        records.append(record);
        record.name = name;
        if (record.name != records.last().name)
            records.append(record);
    }
    return records;
}

void renderAndCheck(const QString &text, const QFnDocument &source, QTextDocument *target)
{
    QList<ZEMScriptElement> records = makeRecords();
    require(ZemFountain::parseText(text, target, &records, nullptr), "every text is rendered");
    const QList<Block> wanted = blocksOf(source);
    require(target->blockCount() == wanted.size(), "a block for each line of each element");
    QTextBlock block = target->begin();
    for (int i = 0; i < wanted.size(); ++i, block = block.next())
        require(block.text() == wanted.at(i).text, "a block has the text of its element");
}

void exportAndCheck(const QFnDocument &source, const QTextDocument &richText, QFnDocument *target)
{
    require(ZemFountain::toFountainDocument(richText, makeRecords(), target, nullptr),
            "every rich text is exported");
    const QList<Block> blocks = blocksOf(source);
    require(target->elements.size() == blocks.size(), "an element for each block");
    for (int i = 0; i < blocks.size(); ++i) {
        const Block wanted = blocks.at(i).text.isEmpty() ? Block() : blocks.at(i);
        require(areEqual(*target->elements.at(i), wanted), "an element is its block");
    }
}

enum Road { Parse, ParseAndWrite, ParseAndRender, RenderExportAndWrite, RoadCount };

void travel(Road road, const QString &text)
{
    QFnFastParser parser(nullptr);
    parseAndCheck(text, &parser);
    const QFnDocument &document = *parser.document;
    if (road == ParseAndWrite) {
        writeAndCheck(document);
        writeStyledAndCheck(document);
    }
    if (road < ParseAndRender)
        return;
    QTextDocument richText;
    renderAndCheck(text, document, &richText);
    if (road < RenderExportAndWrite)
        return;
    QFnDocument exported(nullptr);
    exportAndCheck(document, richText, &exported);
    writeAndCheck(exported);
}

/// The text behind the first byte: as UTF-16 units where bit 2 of that byte is set, else as UTF-8.
QString textOf(const uint8_t *data, size_t size)
{
    constexpr uint8_t unitsBit = 4;
    const char *bytes = reinterpret_cast<const char *>(data) + 1;
    if (!(*data & unitsBit))
        return QString::fromUtf8(bytes, int(size - 1));
    QString text(int((size - 1) / sizeof(QChar)), Qt::Uninitialized);
    std::memcpy(text.data(), bytes, size_t(text.size()) * sizeof(QChar));
    return text;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qSetGlobalQHashSeed(0);                 // a find happens again
    const __lsan::ScopedDisabler leaksOfQt; // its screens are never deleted
    static QGuiApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size > 0)
        travel(Road(*data % RoadCount), textOf(data, size));
    return 0;
}
