// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "base/ZEMScriptElement.h"

#include <QtCore/QMap>
#include <QtCore/QVariant>
#include <QtGui/QTextBlock>

#include <algorithm>

namespace {

int propertyCount(const ZEMScriptElement &record)
{
    return record.blockFormat.propertyCount() + record.charFormat.propertyCount();
}

/// Whether a format that holds \a held would be the same with \a value. Formats look at the type
/// too, and tell numbers apart that QVariant, which compares them with some tolerance, takes for
/// equal.
bool isSame(const QVariant &held, const QVariant &value)
{
    if (held.userType() != value.userType())
        return false;
    if (value.userType() == QMetaType::Double)
        return held.toDouble() == value.toDouble();
    return held == value;
}

/// Whether merging \a part into \a format would change nothing.
bool holds(const QTextFormat &format, const QTextFormat &part)
{
    const QMap<int, QVariant> properties = part.properties();
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (!isSame(format.property(property.key()), *property))
            return false;
    }
    return true;
}

} // namespace

ZEMScriptElement ZEMScriptElement::find(const QList<ZEMScriptElement> &scriptElements,
                                        const QString &name)
{
    if (name.isEmpty())
        return ZEMScriptElement();
    const auto record = std::find_if(scriptElements.cbegin(), scriptElements.cend(),
                                     [&name](const ZEMScriptElement &r) { return r.name == name; });
    return record == scriptElements.cend() ? ZEMScriptElement() : *record;
}

ZEMScriptElement ZEMScriptElement::find(const QList<ZEMScriptElement> &scriptElements,
                                        const QTextBlock &block)
{
    const QTextBlockFormat blockFormat = block.blockFormat();
    const QTextCharFormat charFormat = block.charFormat();
    const ZEMScriptElement *best = nullptr;
    int bestCount = 0;
    for (const ZEMScriptElement &record : scriptElements) {
        const int count = propertyCount(record);
        if (count > bestCount && !record.name.isEmpty() && holds(blockFormat, record.blockFormat)
            && holds(charFormat, record.charFormat)) {
            best = &record;
            bestCount = count;
        }
    }
    return best ? *best : ZEMScriptElement();
}
