// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/listing.h"

#include "host/quoting.h"
#include "host/titlepage.h"
#include "model/qfndocument.h"
#include "parser/qfnfastparser.h"

namespace {

constexpr int kindWidth = 16;

/// What is set in an element beside its type and text.
QString details(const QFnElement &element)
{
    QString text;
    if (element.style.bold)
        text += QLatin1String(" bold");
    if (element.style.italic)
        text += QLatin1String(" italic");
    if (element.style.underline)
        text += QLatin1String(" underline");
    if (element.style.alignment & Qt::AlignHCenter)
        text += QLatin1String(" centred");
    if (element.sectionDepth > 0)
        text += QLatin1String(" depth ") + QString::number(element.sectionDepth);
    if (!element.sceneNumber.isEmpty())
        text += QLatin1String(" number ") + Host::quoted(element.sceneNumber);
    return text;
}

} // namespace

QString Host::listing(const QString &script)
{
    QFnFastParser parser(nullptr);
    parser.parse(script);
    QString lines;
    for (const auto &entry : titleEntries(parser.document->titlePage))
        lines += QStringLiteral("Title Page").leftJustified(kindWidth) + quoted(entry.first)
                 + QLatin1String(": ") + quoted(entry.second) + u'\n';
    for (const QFnElement *element : qAsConst(parser.document->elements))
        lines += QFnElement::toString(element->type).leftJustified(kindWidth)
                 + quoted(element->text) + details(*element) + u'\n';
    return lines;
}
