// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "files.h"
#include "host/pages.h"
#include "host/pdf.h"
#include "host/titlepage.h"
#include "rows.h"

#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

namespace {

/// The pages of a script in plain letters, a list of lines for each.
QVector<QStringList> pagesOf(const QString &script)
{
    QVector<QStringList> pages;
    const auto text = QString::fromUtf8(Host::toPlainPages(Host::layOut(Host::read(script))));
    for (const QString &page : text.split(u'\f'))
        pages.append(page.split(u'\n'));
    return pages;
}

/// The lines with something in them, as "row column text". The row of the first is 0.
QString placed(const QStringList &page)
{
    QStringList lines;
    for (int row = 0; row < page.size(); ++row) {
        const QString text = page.at(row).trimmed();
        if (!text.isEmpty())
            lines.append(u"%1 %2 %3"_s.arg(row).arg(page.at(row).indexOf(text)).arg(text));
    }
    return lines.join(u'\n');
}

} // namespace

class PagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layout_data() { addCases({u"pages-layout"_s}); }
    void layout()
    {
        check([](const QString &script) { return placed(pagesOf(script).first()); });
    }

    void turnsPage_data() { addCases({u"pages-turns"_s}); }
    void turnsPage()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const int above = input.section(u": "_s, 0, 0).toInt();
        const auto pages = pagesOf(u"a\n\n"_s.repeated((above + 1) / 2)
                                   + (above % 2 ? QString() : u"\n"_s) + input.section(u": "_s, 1));
        QCOMPARE(pages.size(), 2);
        QVERIFY(pages.at(0).size() <= Host::pageRows + 1);
        const QString turn = placed(pages.at(0).mid(pages.at(0).size() - 2, 1) + pages.at(1));
        QVERIFY2(turn.startsWith(expected), qPrintable(turn));
    }

    void noPageRunsOver_data() { addCases({u"pages-long"_s}); }
    void noPageRunsOver()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const auto pages =
            pagesOf(input.replace(u'@', u"X"_s.repeated(4000)) + expected.repeated(200));
        QVERIFY(pages.size() > 1);
        for (const QStringList &page : pages) {
            QVERIFY(page.size() <= Host::pageRows + 1);
            for (const QString &line : page)
                QVERIFY2(line.size() <= 80, qPrintable(line));
        }
    }

    void titlePage_data() { addCases({u"pages-titles"_s}); }
    void titlePage()
    {
        check([](const QString &script) {
            QStringList pages;
            for (const QStringList &page : pagesOf(script))
                pages.append(placed(page));
            return pages.join(u'|');
        });
    }

    void longTitlePageGoesOn()
    {
        const auto pages = pagesOf(u"Title: a\nContact:\n"_s + u"    b\n"_s.repeated(60)
                                   + u"Copyright:\n"_s + u"    c\n"_s.repeated(20) + u"\nx\n"_s);
        QCOMPARE(pages.size(), 4);
        QCOMPARE(pages.at(0).at(34).trimmed(), u"c"_s);
        QCOMPARE(pages.at(1).at(53).trimmed(), u"b"_s);
        QCOMPARE(placed(pages.at(2)).count(u'b'), 6);
        // A head of 20 lines leaves 16 for the foot.
        const QString head = u"Title:\n"_s + u"    a\n"_s.repeated(20) + u"Contact:\n"_s;
        QCOMPARE(pagesOf(head + u"    b\n"_s.repeated(16) + u"\nx\n"_s).size(), 2);
        QCOMPARE(pagesOf(head + u"    b\n"_s.repeated(17) + u"\nx\n"_s).size(), 3);
        QCOMPARE(pagesOf(u"Title:\n"_s + u"    a\n"_s.repeated(55)).first().first().trimmed(),
                 u"a"_s);
        QCOMPARE(Host::titleOf(Host::read(u"Title: a\n    *b*\n\nc\n"_s)), u"a b"_s);
    }

    void emphasisStaysAtItsLetters()
    {
        const auto pages = Host::layOut(Host::read(u"*x*\none **two** _three *four*_ *five*\n"_s));
        QCOMPARE(pages.first().lines.first().paragraph, 0);
        QCOMPARE(Host::layOut(Host::read(u"INT. A #1#\n"_s)).first().lines.last().paragraph, -1);
        QStringList looks;
        for (const Host::Stretch &s : pages.first().lines.last().stretches)
            looks.append(s.text + QString::number(s.emphasis));
        QCOMPARE(looks.join(u'|'), u"one 0|two4| 0|three 1|four3| 0|five2"_s);
    }

    // Columns and rows of the PDF's own words, from points: 7.2 a letter, 12 a line.
    void pdf()
    {
        if (QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty())
            QSKIP("needs pdftotext");
        QString problem;
        const auto script = Host::read(
            u"Title: Sea\n\nINT. SEA #1#\n\n**Zoe\u0301** *waits*.\n\n===\n\nBEN\nHi.\n"_s);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"x.pdf"_s);
        create(path, Host::toPdf(Host::layOut(script), u"The Sea"_s, QPageSize::A4, &problem));
        const auto run = [](const QString &program, const QStringList &arguments) {
            QProcess process;
            process.start(program, arguments);
            process.waitForFinished();
            return QString::fromUtf8(process.readAllStandardOutput());
        };
        const QString boxes = run(u"pdftotext"_s, {u"-bbox"_s, path, u"-"_s});
        QVERIFY2(boxes.contains(u"<title>The Sea</title>"_s), qPrintable(boxes));
        QVERIFY(boxes.contains(u"\"Creator\" content=\"tst_pages\""_s));
        QStringList words;
        const QRegularExpression box(
            u"(<page width=\"595)|xMin=\"(.*?)\" yMin=\"(.*?)\".*>(.*)</word>"_s);
        for (auto match = box.globalMatch(boxes); match.hasNext();) {
            const auto found = match.next();
            words.append(!found.captured(1).isEmpty()
                             ? u"|"_s
                             : u"%1 %2 %3"_s.arg(qRound((found.captured(3).toDouble() - 72) / 12))
                                   .arg(qRound(found.captured(2).toDouble() / 7.2))
                                   .arg(found.captured(4)));
        }
        words.sort(); // pdftotext has an order of its own
        QCOMPARE(words.join(u','), u"-3 73 2.,0 12 1,0 15 INT.,0 20 SEA,0 37 BEN,0 79 1,1 25 Hi.,"
                                   "16 43 Sea,2 15 Zo\u00e9,2 19 waits.,|,|,|"_s);
        const QString fonts = run(u"pdffonts"_s, {path});
        QVERIFY2(fonts.contains(QRegularExpression(u"Bold(.|\n)*(Italic|Oblique)"_s)),
                 qPrintable(fonts));
        QCOMPARE(problem, QString());
    }
};

QTEST_MAIN(PagesTest)
#include "tst_pages.moc"
