// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "model/qfnelement.h"

#include <algorithm>
#include <iterator>

namespace {

struct TypeName
{
    QLatin1String given;    ///< what toString() gives
    QLatin1String accepted; ///< what toElementType() accepts
};

// A row for each type, in the order of the enumeration. The two headings are written with a blank
// and taken without one; applications hold records under both names.
constexpr TypeName typeNames[] = {
    {QLatin1String("Undefined"), QLatin1String("Undefined")},
    {QLatin1String("Action"), QLatin1String("Action")},
    {QLatin1String("Boneyard"), QLatin1String("Boneyard")},
    {QLatin1String("Character"), QLatin1String("Character")},
    {QLatin1String("Notes"), QLatin1String("Notes")},
    {QLatin1String("Dialogue"), QLatin1String("Dialogue")},
    {QLatin1String("PageBreak"), QLatin1String("PageBreak")},
    {QLatin1String("Parenthetical"), QLatin1String("Parenthetical")},
    {QLatin1String("Scene Heading"), QLatin1String("SceneHeading")},
    {QLatin1String("Section Heading"), QLatin1String("SectionHeading")},
    {QLatin1String("Synopsis"), QLatin1String("Synopsis")},
    {QLatin1String("Transition"), QLatin1String("Transition")},
    {QLatin1String("General"), QLatin1String("General")},
};
static_assert(std::size(typeNames) == QFnElement::General + 1, "a name for every type");

} // namespace

QFnElement::QFnElement()
    : type(Undefined)
    , sectionDepth(0)
{}

void QFnElement::clear()
{
    *this = QFnElement();
}

QString QFnElement::toString(QFnElement::Type type)
{
    if (type < Undefined || type > General)
        return QString();
    return typeNames[type].given;
}

QFnElement::Type QFnElement::toElementType(const QString &name)
{
    const auto row = std::find_if(std::begin(typeNames), std::end(typeNames),
                                  [&name](const TypeName &n) { return n.accepted == name; });
    if (row == std::end(typeNames))
        return Undefined;
    return QFnElement::Type(std::distance(std::begin(typeNames), row));
}
