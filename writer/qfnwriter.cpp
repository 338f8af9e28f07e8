// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "writer/qfnwriter.h"

#include "model/qfndocument.h"
#include "model/qfnelement.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QIODevice>

#include <algorithm>
#include <iterator>

namespace {

/// What is written around the text of an element.
struct Form
{
    QLatin1String lineEnd; ///< always
    QLatin1String open;    ///< unless the text starts with it
    QLatin1String close;   ///< unless the text ends with it
};

constexpr QLatin1String none;
constexpr QLatin1String newLine("\n");

// A row for each type, in the order of the enumeration.
constexpr Form forms[] = {
    {newLine, none, none},                            // Undefined
    {newLine, none, none},                            // Action
    {newLine, none, none},                            // Boneyard
    {newLine, none, none},                            // Character
    {none, QLatin1String("[["), QLatin1String("]]")}, // Notes
    {none, none, none},                               // Dialogue
    {newLine, none, none},                            // PageBreak
    {none, QLatin1String("("), QLatin1String(")")},   // Parenthetical
    {newLine, QLatin1String("."), none},              // SceneHeading
    {none, QLatin1String("#"), none},                 // SectionHeading
    {none, QLatin1String("="), none},                 // Synopsis
    {none, QLatin1String(">"), none},                 // Transition
    {newLine, none, none},                            // General
};
static_assert(std::size(forms) == QFnElement::General + 1, "a form for every type");

constexpr QLatin1String pageBreak("===");

// A heading that starts with one of these needs no mark.
constexpr QLatin1String scenePrefixes[] = {
    QLatin1String("INT "),      QLatin1String("INT."),     QLatin1String("EXT "),
    QLatin1String("EXT."),      QLatin1String("EST "),     QLatin1String("EST."),
    QLatin1String("INT/EXT "),  QLatin1String("INT/EXT."), QLatin1String("INT./EXT "),
    QLatin1String("INT./EXT."), QLatin1String("I/E "),     QLatin1String("I/E."),
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
        return QString(element.text).replace(QLatin1String("\n\n"), QLatin1String("\n  \n"));
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
    {&QFnStyle::underline, QLatin1String("_")},
    {&QFnStyle::italic, QLatin1String("*")},
    {&QFnStyle::bold, QLatin1String("**")},
};

constexpr QLatin1String centredOpen(">");
constexpr QLatin1String centredClose("<");

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
