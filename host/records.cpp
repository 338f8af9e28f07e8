// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/records.h"

#include "model/literals_p.h"

#include <QtCore/QUrl>
#include <QtGui/QTextBlock>

#include <utility>

namespace {

using Zem::operator""_L1;

struct ParagraphKind
{
    QLatin1String name;
    int top, bottom, left, right; ///< margins in pixels of 1/96 inch
    Qt::Alignment alignment;      ///< none: that of the text's style
};

// Reading HTML gives a right alignment this second flag. The record has it from the start, or the
// block would no longer be its own afterwards.
constexpr Qt::Alignment rightAligned = Qt::Alignment(Qt::AlignRight | Qt::AlignAbsolute);
constexpr Qt::Alignment centredAlignment = Qt::AlignHCenter;
constexpr Qt::Alignment ownAlignment;

constexpr int oneLine = Host::linePixels;

// No two rows have the same margins, so that each block is recognised by them alone. The columns
// are those of a script page with an action column of six inches.
constexpr ParagraphKind paragraphKinds[] = {
    {"Action"_L1, oneLine, 0, 0, 0, ownAlignment},
    {"SceneHeading"_L1, 2 * oneLine, 0, 0, 0, ownAlignment},
    {"Scene Heading"_L1, 2 * oneLine, 0, 0, 0, ownAlignment},
    {"Character"_L1, oneLine, 0, 211, 0, ownAlignment},
    {"Parenthetical"_L1, 0, 0, 154, 192, ownAlignment},
    {"Dialogue"_L1, 0, 0, 96, 144, ownAlignment},
    {"Transition"_L1, oneLine, 0, 288, 0, rightAligned},
    {"SectionHeading"_L1, 3 * oneLine, 0, 0, 0, ownAlignment},
    {"Section Heading"_L1, 3 * oneLine, 0, 0, 0, ownAlignment},
    {"Synopsis"_L1, oneLine, 0, 24, 0, ownAlignment},
    {"Notes"_L1, oneLine, 0, 48, 48, ownAlignment},
    {"Boneyard"_L1, 0, 0, 72, 72, ownAlignment},
    {"PageBreak"_L1, oneLine, oneLine, 0, 0, ownAlignment},
    {"General"_L1, oneLine, 0, 12, 0, ownAlignment},
    {"Title Page"_L1, 0, 0, 48, 48, centredAlignment},
};

constexpr QLatin1String anchorPrefix = "source:"_L1;
constexpr QChar anchorMark = QLatin1Char(':'); // behind the number

ZEMScriptElement toRecord(const ParagraphKind &kind)
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
        for (const ParagraphKind &kind : paragraphKinds)
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

QColor Host::workingColour(QFnElement::Type type)
{
    switch (type) {
    case QFnElement::Notes:
        return QColor(0x8a, 0x5a, 0x00);
    case QFnElement::Boneyard:
        return QColor(0x6b, 0x6b, 0x6b);
    case QFnElement::SectionHeading:
        return QColor(0x5b, 0x3b, 0x8c);
    case QFnElement::Synopsis:
        return QColor(0x1f, 0x5f, 0x8b);
    default:
        return {};
    }
}

QString Host::sourceAnchor(int number, const QString &source)
{
    // The mark is coded with the source, or U+FEFF at its front would be dropped as a byte order
    // mark.
    return anchorPrefix + QString::number(number)
           + QString::fromLatin1(QUrl::toPercentEncoding(anchorMark + source));
}

QString Host::sourceOfAnchor(const QStringList &names)
{
    const QString name = names.value(0);
    if (!name.startsWith(anchorPrefix))
        return {};
    const QString decoded = QUrl::fromPercentEncoding(name.mid(anchorPrefix.size()).toLatin1());
    return decoded.mid(decoded.indexOf(anchorMark) + 1);
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
