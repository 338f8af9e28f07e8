// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "base/ZEMScriptElement.h"

#include <QtGui/QTextBlock>

#include <algorithm>

namespace {

int propertyCount(const ZEMScriptElement &record)
{
    return record.blockFormat.propertyCount() + record.charFormat.propertyCount();
}

template<typename Format>
bool isMergedInto(const Format &format, const Format &part)
{
    Format merged = format;
    merged.merge(part);
    return merged == format;
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
        if (count > bestCount && !record.name.isEmpty()
            && isMergedInto(blockFormat, record.blockFormat)
            && isMergedInto(charFormat, record.charFormat)) {
            best = &record;
            bestCount = count;
        }
    }
    return best ? *best : ZEMScriptElement();
}
