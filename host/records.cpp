// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/records.h"

#include <QtGui/QTextBlock>

#include <utility>

namespace {

struct Kind
{
    QLatin1String name;
    int top, bottom, left, right; ///< margins in pixels of 1/96 inch
    Qt::Alignment alignment;      ///< none: that of the text's style
};

// Reading HTML gives a right alignment this second flag. The record has it from the start, or the
// block would no longer be its own afterwards.
constexpr Qt::Alignment right = Qt::Alignment(Qt::AlignRight | Qt::AlignAbsolute);
constexpr Qt::Alignment centred = Qt::AlignHCenter;
constexpr Qt::Alignment own;

constexpr int line = Host::linePixels;

// No two rows have the same margins, so that each block is recognised by them alone. The columns
// are those of a script page with an action column of six inches.
constexpr Kind kinds[] = {
    {QLatin1String("Action"), line, 0, 0, 0, own},
    {QLatin1String("SceneHeading"), 2 * line, 0, 0, 0, own},
    {QLatin1String("Scene Heading"), 2 * line, 0, 0, 0, own},
    {QLatin1String("Character"), line, 0, 211, 0, own},
    {QLatin1String("Parenthetical"), 0, 0, 154, 192, own},
    {QLatin1String("Dialogue"), 0, 0, 96, 144, own},
    {QLatin1String("Transition"), line, 0, 288, 0, right},
    {QLatin1String("SectionHeading"), 3 * line, 0, 0, 0, own},
    {QLatin1String("Section Heading"), 3 * line, 0, 0, 0, own},
    {QLatin1String("Synopsis"), line, 0, 24, 0, own},
    {QLatin1String("Notes"), line, 0, 48, 48, own},
    {QLatin1String("Boneyard"), 0, 0, 72, 72, own},
    {QLatin1String("PageBreak"), line, line, 0, 0, own},
    {QLatin1String("General"), line, 0, 12, 0, own},
    {QLatin1String("Title Page"), 0, 0, 48, 48, centred},
};

ZEMScriptElement toRecord(const Kind &kind)
{
    ZEMScriptElement record;
    record.name = kind.name;
    // Reading HTML leaves out a margin of 0, so a record must not ask for one.
    const std::pair<QTextFormat::Property, int> margins[] = {
        {QTextFormat::BlockTopMargin, kind.top},
        {QTextFormat::BlockBottomMargin, kind.bottom},
        {QTextFormat::BlockLeftMargin, kind.left},
        {QTextFormat::BlockRightMargin, kind.right},
    };
    for (const auto &margin : margins) {
        if (margin.second != 0)
            record.blockFormat.setProperty(margin.first, qreal(margin.second));
    }
    if (kind.alignment)
        record.blockFormat.setAlignment(kind.alignment);
    return record;
}

} // namespace

const QList<ZEMScriptElement> &Host::records()
{
    static const QList<ZEMScriptElement> list = [] {
        QList<ZEMScriptElement> all;
        for (const Kind &kind : kinds)
            all.append(toRecord(kind));
        return all;
    }();
    return list;
}

QString Host::titlePageName()
{
    return QStringLiteral("Title Page");
}

ZEMScriptElement Host::recordOf(const QTextBlock &block)
{
    return ZEMScriptElement::find(records(), block);
}

QFnElement::Type Host::typeOf(const QTextBlock &block)
{
    return QFnElement::toElementType(recordOf(block).name);
}

bool Host::continuesLine(const QTextBlock &block)
{
    const QTextBlock above = block.previous();
    if (!above.isValid() || above.length() == 1 || block.length() == 1)
        return false;
    const auto isLeftAction = [](const QTextBlock &b) {
        return typeOf(b) == QFnElement::Action && !(b.blockFormat().alignment() & Qt::AlignHCenter);
    };
    if (typeOf(block) == QFnElement::Notes)
        return isLeftAction(above);
    return isLeftAction(block) && typeOf(above) == QFnElement::Notes
           && block.text().at(0).isSpace();
}

QFont Host::scriptFont()
{
    QFont font(QStringLiteral("Courier Prime"), 12);
    font.setFamilies({font.family(), QStringLiteral("Courier New"), QStringLiteral("Courier"),
                      QStringLiteral("Liberation Mono"), QStringLiteral("DejaVu Sans Mono")});
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    return font;
}
