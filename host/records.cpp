// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/records.h"

#include "model/literals_p.h"

#include <QtCore/QUrl>
#include <QtGui/QTextBlock>

#include <utility>

namespace {

using Zem::operator""_L1;

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
    {"Action"_L1, line, 0, 0, 0, own},
    {"SceneHeading"_L1, 2 * line, 0, 0, 0, own},
    {"Scene Heading"_L1, 2 * line, 0, 0, 0, own},
    {"Character"_L1, line, 0, 211, 0, own},
    {"Parenthetical"_L1, 0, 0, 154, 192, own},
    {"Dialogue"_L1, 0, 0, 96, 144, own},
    {"Transition"_L1, line, 0, 288, 0, right},
    {"SectionHeading"_L1, 3 * line, 0, 0, 0, own},
    {"Section Heading"_L1, 3 * line, 0, 0, 0, own},
    {"Synopsis"_L1, line, 0, 24, 0, own},
    {"Notes"_L1, line, 0, 48, 48, own},
    {"Boneyard"_L1, 0, 0, 72, 72, own},
    {"PageBreak"_L1, line, line, 0, 0, own},
    {"General"_L1, line, 0, 12, 0, own},
    {"Title Page"_L1, 0, 0, 48, 48, centred},
};

constexpr QLatin1String anchorPrefix = "source:"_L1;
constexpr QChar anchorMark = QLatin1Char(':'); // behind the number

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
        return QColor();
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
        return QString();
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
