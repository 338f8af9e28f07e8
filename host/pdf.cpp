// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/pdf.h"

#include "host/lines.h"
#include "host/records.h"
#include "model/literals_p.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>

#include <algorithm>
#include <iterator>

namespace {

using Zem::operator""_L1;

constexpr int dotsPerInch = 1200; // as QPdfWriter has it
constexpr qreal letterWidth = dotsPerInch / 10.0;
constexpr qreal lineHeight = dotsPerInch / 6.0;
constexpr qreal firstBaseline = dotsPerInch + 0.8 * lineHeight;
constexpr int numberRow = -3; // half an inch from the upper edge
constexpr int numberEnd = 75; // the column behind a page number

/// What the letters of the script that \a letter belongs to are called.
QString scriptOf(uint letter)
{
    for (int i = QFontDatabase::Latin; i < QFontDatabase::WritingSystemsCount; ++i) {
        const auto system = QFontDatabase::WritingSystem(i);
        for (const QChar c : QFontDatabase::writingSystemSample(system)) {
            if (QChar::isLetter(letter) && c.script() == QChar::script(letter))
                return QFontDatabase::writingSystemName(system);
        }
    }
    return QStringLiteral("U+%1").arg(letter, 4, 16, QLatin1Char('0')).toUpper();
}

/// How often each letter is printed.
QMap<uint, int> lettersIn(const QVector<Host::Page> &pages)
{
    QMap<uint, int> counts;
    for (const Host::Page &page : pages) {
        for (const Host::PageLine &line : page.lines) {
            for (const uint letter : Host::textOf(line.stretches).toUcs4()) {
                if (QChar::isLetterOrNumber(letter) || QChar::isPunct(letter)
                    || QChar::isSymbol(letter))
                    ++counts[letter];
            }
        }
    }
    return counts;
}

/// Gives \a problem one line if a face is missing. False if most letters can't be printed.
bool checkFaces(const QVector<Host::Page> &pages, QString *problem)
{
    const QFont font = Host::scriptFont();
    const QFontMetricsF metrics(font);
    const QMap<uint, int> letters = lettersIn(pages);
    QStringList missing;
    int lost = 0;
    int printed = 0;
    for (auto letter = letters.cbegin(); letter != letters.cend(); ++letter) {
        printed += letter.value();
        if (metrics.inFontUcs4(letter.key()))
            continue;
        lost += letter.value();
        missing.append(scriptOf(letter.key()));
    }
    missing.removeDuplicates();
    if (!metrics.inFontUcs4('M'))
        *problem = QStringLiteral("there is no face to print with; install a typewriter face, such "
                                  "as Liberation Mono or Courier Prime");
    else if (lost > 0)
        *problem = "no face has these letters: "_L1 + missing.join(", "_L1)
                   + "; install one that has them, such as those called Noto"_L1;
    else if (!QFontInfo(font).fixedPitch())
        *problem = "there is no typewriter face, "_L1 + QFontInfo(font).family()
                   + " is taken; install one, such as Liberation Mono or Courier Prime"_L1;
    return metrics.inFontUcs4('M') && lost * 2 <= printed;
}

/// Draws \a stretch at \a row and \a column, in letters.
void draw(const Host::Stretch &stretch, int row, int column, QPainter *painter)
{
    // An accent that is a character of its own may come from another face, and beside its letter.
    const QString text = stretch.text.normalized(QString::NormalizationForm_C);
    QFont font = Host::scriptFont();
    font.setBold(stretch.emphasis & Host::Stretch::Bold);
    font.setItalic(stretch.emphasis & Host::Stretch::Italic);
    font.setUnderline(stretch.emphasis & Host::Stretch::Underline);
    painter->setFont(font);
    painter->save();
    painter->translate(column * letterWidth, firstBaseline + row * lineHeight);
    // Faces differ by a hair, and those of other scripts by much. None leaves its columns.
    const qreal own = QFontMetricsF(font, painter->device()).horizontalAdvance(text);
    const qreal room = Host::lettersOf(text) * letterWidth;
    painter->scale(std::min(room / own, 1.0), 1);
    painter->drawText(QPointF(), text);
    painter->restore();
}

void draw(const Host::Page &page, QPainter *painter)
{
    for (const Host::PageLine &line : page.lines) {
        int column = line.column;
        for (const Host::Stretch &stretch : line.stretches) {
            draw(stretch, line.row, column, painter);
            column += Host::lettersOf(stretch.text);
        }
    }
    if (page.number > 1) {
        Host::Stretch number;
        number.text = QString::number(page.number) + u'.';
        draw(number, numberRow, numberEnd - int(number.text.size()), painter);
    }
}

} // namespace

QByteArray Host::toPdf(const QVector<Page> &pages, const QString &title,
                       QPageSize::PageSizeId paper, QString *problem)
{
    if (!checkFaces(pages, problem))
        return {};
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(paper));
        writer.setPageMargins(QMarginsF());
        writer.setCreator(QCoreApplication::applicationName());
        writer.setTitle(title); // before the painter begins, or it is not written
        QPainter painter(&writer);
        for (int i = 0; i < pages.size(); ++i) {
            if (i > 0)
                writer.newPage();
            draw(pages.at(i), &painter);
        }
    }
    return buffer.data();
}

QPageSize::PageSizeId Host::customaryPaper()
{
    constexpr QLocale::Country letterCountries[] = {
        QLocale::AnyCountry, QLocale::Belize,       QLocale::Canada,     QLocale::Chile,
        QLocale::Colombia,   QLocale::CostaRica,    QLocale::ElSalvador, QLocale::Guatemala,
        QLocale::Mexico,     QLocale::Nicaragua,    QLocale::Panama,     QLocale::Philippines,
        QLocale::PuertoRico, QLocale::UnitedStates, QLocale::Venezuela};
    QString locale; // QLocale::system() does not know of the paper.
    for (const char *variable : {"LC_ALL", "LC_PAPER", "LANG"})
        locale = locale.isEmpty() ? qEnvironmentVariable(variable) : locale;
    const auto found = std::find(std::begin(letterCountries), std::end(letterCountries),
                                 QLocale(locale).country());
    return found == std::end(letterCountries) ? QPageSize::A4 : QPageSize::Letter;
}
