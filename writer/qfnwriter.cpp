// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "writer/qfnwriter.h"

#include "model/literals_p.h"
#include "model/qfndocument.h"
#include "model/qfnelement.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QIODevice>

#include <algorithm>
#include <iterator>

namespace {

using Zem::operator""_L1;

/// What is written around the text of an element.
struct Form
{
    QLatin1String lineEnd; ///< always
    QLatin1String open;    ///< unless the text starts with it
    QLatin1String close;   ///< unless the text ends with it
};

constexpr QLatin1String none;
constexpr QLatin1String newLine = "\n"_L1;

// A row for each type, in the order of the enumeration.
constexpr Form forms[] = {
    {newLine, none, none},    // Undefined
    {newLine, none, none},    // Action
    {newLine, none, none},    // Boneyard
    {newLine, none, none},    // Character
    {none, "[["_L1, "]]"_L1}, // Notes
    {none, none, none},       // Dialogue
    {newLine, none, none},    // PageBreak
    {none, "("_L1, ")"_L1},   // Parenthetical
    {newLine, "."_L1, none},  // SceneHeading
    {none, "#"_L1, none},     // SectionHeading
    {none, "="_L1, none},     // Synopsis
    {none, ">"_L1, none},     // Transition
    {newLine, none, none},    // General
};
static_assert(std::size(forms) == QFnElement::General + 1, "a form for every type");

constexpr QLatin1String pageBreak = "==="_L1;

// A heading that starts with one of these needs no mark.
constexpr QLatin1String scenePrefixes[] = {
    "INT "_L1,     "INT."_L1,     "EXT "_L1,      "EXT."_L1,      "EST "_L1, "EST."_L1,
    "INT/EXT "_L1, "INT/EXT."_L1, "INT./EXT "_L1, "INT./EXT."_L1, "I/E "_L1, "I/E."_L1,
};

const Form &formOf(QFnElement::Type type)
{
    const bool known = type >= QFnElement::Undefined && type <= QFnElement::General;
    return forms[known ? type : QFnElement::General];
}

bool hasScenePrefix(const QString &text)
{
    return std::any_of(std::begin(scenePrefixes), std::end(scenePrefixes),
                       [&](QLatin1String p) { return text.startsWith(p, Qt::CaseInsensitive); });
}

bool needsOpening(const QFnElement &element, QLatin1String mark)
{
    if (element.text.startsWith(mark))
        return false;
    return element.type != QFnElement::SceneHeading || !hasScenePrefix(element.text);
}

/// The text of the element as its form has it.
QString writtenText(const QFnElement &element)
{
    switch (element.type) {
    case QFnElement::Character:
        return element.text.toUpper();
    case QFnElement::PageBreak:
        return pageBreak;
    case QFnElement::Notes:
        // A blank line would end the note; a line of two blanks does not.
        return QString(element.text).replace("\n\n"_L1, "\n  \n"_L1);
    default:
        return element.text;
    }
}

/// A flag of the style and its mark, the same on both sides of the text.
struct EmphasisMark
{
    bool QFnStyle::*flag;
    QLatin1String mark;
};

// In the order of opening, behind the ">" of centred text. Marks close in the reverse order.
constexpr EmphasisMark emphasisMarks[] = {
    {&QFnStyle::underline, "_"_L1},
    {&QFnStyle::italic, "*"_L1},
    {&QFnStyle::bold, "**"_L1},
};

constexpr QLatin1String centredOpen = ">"_L1;
constexpr QLatin1String centredClose = "<"_L1;

} // namespace

QFnWriter::QFnWriter(QIODevice *output)
    : device(output)
    , document(nullptr)
{}

bool QFnWriter::write(const QFnDocument *source)
{
    document = source;
    const bool written = writeDocument();
    document = nullptr;
    return written;
}

bool QFnWriter::writeFile(const QString &path, const QFnDocument *source)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        errorString = file.errorString();
        return false;
    }
    device = &file;
    const bool written = write(source);
    device = nullptr;
    file.flush();
    file.close();
    return written;
}

bool QFnWriter::writeDocument()
{
    if (!document)
        return false;
    for (const QFnElement *element : document->elements) {
        finalizeLastElementStyle();
        if (element->text.isEmpty())
            writeMark(newLine);
        else
            writeForm(*element);
    }
    return true;
}

void QFnWriter::writeForm(const QFnElement &element)
{
    const Form &form = formOf(element.type);
    writeMark(form.lineEnd);
    if (needsOpening(element, form.open))
        writeMark(form.open);
    writePiece(writtenText(element));
    if (!element.text.endsWith(form.close))
        writeMark(form.close);
}

void QFnWriter::writeElementText(const QFnElement *element)
{
    Q_ASSERT(element);
    const QFnStyle &wanted = element->style;
    if (wanted.alignment.testFlag(Qt::AlignHCenter) && wanted.alignment != style.alignment)
        writeMark(centredOpen);
    for (const EmphasisMark &emphasis : emphasisMarks) {
        if (wanted.*emphasis.flag && !(style.*emphasis.flag))
            writeMark(emphasis.mark);
    }
    writePiece(element->text.toUpper());
    style = wanted;
}

void QFnWriter::finalizeLastElementStyle()
{
    std::for_each(std::rbegin(emphasisMarks), std::rend(emphasisMarks),
                  [this](const EmphasisMark &emphasis) {
                      if (style.*emphasis.flag)
                          writeMark(emphasis.mark);
                  });
    if (style.alignment.testFlag(Qt::AlignHCenter))
        writeMark(centredClose);
    style = QFnStyle();
}

// Whether the device took a piece is not looked at: the walk goes on to its end in any case.

void QFnWriter::writePiece(const QString &text)
{
    Q_ASSERT(device && device->isWritable());
    const QByteArray bytes = text.toUtf8();
    device->write(bytes.constData(), bytes.size());
}

void QFnWriter::writeMark(QLatin1String mark)
{
    Q_ASSERT(device && device->isWritable());
    if (mark.size() > 0)
        device->write(mark.data(), mark.size());
}
