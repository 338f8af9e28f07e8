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

/// Whether merging \a part into \a format would change nothing. A value of another type would be a
/// change, even one that compares equal.
bool holds(const QTextFormat &format, const QTextFormat &part)
{
    const QMap<int, QVariant> properties = part.properties();
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        const QVariant held = format.property(property.key());
        if (held.userType() != property->userType() || held != *property)
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
    const qreal leftMargin = blockFormat.leftMargin();
    const ZEMScriptElement *best = nullptr;
    int bestCount = 0;
    for (const ZEMScriptElement &record : scriptElements) {
        // Most kinds of paragraph have a left margin of their own. A glance at it rejects them
        // before anything is copied.
        if (record.blockFormat.leftMargin() != leftMargin
            && record.blockFormat.hasProperty(QTextFormat::BlockLeftMargin))
            continue;
        const int count = propertyCount(record);
        if (count > bestCount && !record.name.isEmpty() && holds(blockFormat, record.blockFormat)
            && holds(charFormat, record.charFormat)) {
            best = &record;
            bestCount = count;
        }
    }
    return best ? *best : ZEMScriptElement();
}
