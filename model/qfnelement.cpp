// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "model/qfnelement.h"

#include "model/literals_p.h"

#include <algorithm>
#include <iterator>

namespace {

using Zem::operator""_L1;

struct TypeName
{
    QLatin1String given;    ///< what toString() gives
    QLatin1String accepted; ///< what toElementType() accepts
};

// A row for each type, in the order of the enumeration. The two headings are written with a blank
// and taken without one; applications hold records under both names.
constexpr TypeName typeNames[] = {
    {"Undefined"_L1, "Undefined"_L1},
    {"Action"_L1, "Action"_L1},
    {"Boneyard"_L1, "Boneyard"_L1},
    {"Character"_L1, "Character"_L1},
    {"Notes"_L1, "Notes"_L1},
    {"Dialogue"_L1, "Dialogue"_L1},
    {"PageBreak"_L1, "PageBreak"_L1},
    {"Parenthetical"_L1, "Parenthetical"_L1},
    {"Scene Heading"_L1, "SceneHeading"_L1},
    {"Section Heading"_L1, "SectionHeading"_L1},
    {"Synopsis"_L1, "Synopsis"_L1},
    {"Transition"_L1, "Transition"_L1},
    {"General"_L1, "General"_L1},
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
