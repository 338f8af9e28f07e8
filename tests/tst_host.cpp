// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"
#include "files.h"
#include "host/files.h"

#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

namespace {

/// A line for the shell and what it gives.
struct Call
{
    const char *name, *line;
    int code;
    const char
        *words; ///< All on standard output, or with a code in the one line on standard error.
};

// clang-format off
const Call calls[] = {
    {"standard input to standard output", "zemscript import - --to txt < good", 0, "               Anna enters.\n"},
    {"the format told beats the ending", "zemscript import good x.pdf --to TXT && cat x.pdf", 0, "               Anna enters.\n"},
    {"ending in capitals", "zemscript import good x.TXT && cat x.TXT", 0, "               Anna enters.\n"},
    {"no platform is heeded", "QT_QPA_PLATFORM=none QT_QPA_PLATFORMTHEME=gtk3 zemscript import good --to txt", 0, "               Anna enters.\n"},
    {"ODF", "zemscript import good x.odt && head -c 2 x.odt", 0, "PK"},
    {"PDF", "zemscript import good x.pdf && head -c 5 x.pdf", 0, "%PDF-"},
    {"to HTML and back", "zemscript import all x.html && zemscript export x.html - | cmp - all", 0, ""},
    {"in a pipe", "zemscript import good --to html | zemscript export - back && cat back", 0, "Anna enters.\n"},
    {"title of HTML", "zemscript import all --to html | grep -o '<title>.*</title>'", 0, "<title>A</title>\n"},
    {"or the name of the file", "zemscript import good --to html | grep -o '<title>.*</title>'", 0, "<title>good</title>\n"},
    {"encoding of HTML", "zemscript import good --to html | grep -ic 'charset=.\\?utf-8'", 0, "1\n"},
    {"sides of HTML", "printf 'Title: A\n\n> b\n' | zemscript import - --to html | grep -o 'align=\"[a-z]*\"'", 0, "align=\"center\"\nalign=\"right\"\n"},
    {"the library's own rich text", "zemscript import plain x.html --plain && zemscript export x.html --plain", 0, "\n.B \nc"},
    {"what no script can say", "echo '<p>a *b* c</p><p>a</p>' | zemscript export - x 2>&1 | grep -c ^zemscript:", 0, "1\n"},
    {"elements", "zemscript elements all", 0,
     "Title Page      \"Title\": \"A\"\nTitle Page      \"Author\": \"Z\"\n"
     "Scene Heading   \"B \" number \"1\"\nAction          \"c\" bold italic underline centred\n"
     "Action          \"\" centred\nAction          \"d\\\\\"\nSection Heading \"e\" depth 2\nUndefined       \"\"\n"},
    {"mark and line ends", "zemscript elements mac", 0, "Scene Heading   \"A\"\nAction          \"b\"\n"},
    {"US Letter", "LC_ALL=en_US.UTF-8 zemscript import good --to pdf | grep -ao 'MediaBox .0 0 ...'", 0, "MediaBox [0 0 612\n"},
    {"A4 where it is custom", "LC_ALL=de_DE.UTF-8 zemscript import good --to pdf | grep -ao 'MediaBox .0 0 ...'", 0, "MediaBox [0 0 595\n"},
    {"Letter as told", "LC_ALL=de_DE.UTF-8 zemscript import good --to pdf --paper letter | grep -ao 'MediaBox .0 0 ...'", 0, "MediaBox [0 0 612\n"},
    {"A4 as told", "LC_ALL=C zemscript import good --to pdf --paper a4 | grep -ao 'MediaBox .0 0 ...'", 0, "MediaBox [0 0 595\n"},
    {"version", "zemscript --version | tr -d 0-9", 0, "zemscript ..\n"},
    {"many at once", "for i in $(seq 20); do zemscript import good o$i.txt & zemscript import good o.txt & done; wait; sort o*.txt | uniq -c", 0,
     "     21                Anna enters.\n"},
    // What fails or is refused leaves an older file as it was.
    {"missing", "zemscript import none o.html", 1, "none: no such file\n"},
    {"folder", "zemscript import folder o.html", 1, "folder: is a folder"},
    {"folder on standard input", "zemscript elements - < folder", 1, "standard input: cannot be read"},
    {"no UTF-8", "zemscript import latin o.html", 1, "latin: is not UTF-8 at byte 4, counted from 0; mend it with: iconv -f WINDOWS-1252 -t UTF-8 'latin'"},
    {"on standard input", "zemscript import - o.html < latin", 1, "-: is not UTF-8 at byte 4, counted from 0; mend it with: iconv -f WINDOWS-1252 -t UTF-8\n"},
    {"cut short", "zemscript elements short", 1, "short: is not UTF-8 at byte 2,"},
    {"lone surrogate", "zemscript elements mark", 1, "mark: is not UTF-8 at byte 5,"},
    {"UTF-16", "zemscript elements \"it's\"", 1, "it's: is UTF-16, not UTF-8 at byte 0, counted from 0; mend it with: iconv -f UTF-16 -t UTF-8 'it'\\''s'\n"},
    {"UTF-16 without a mark", "zemscript elements wide", 1, "wide: is UTF-16LE, not"},
    {"and the other way round", "zemscript elements Wide", 1, "Wide: is UTF-16BE, not"},
    {"unknown ending", "zemscript import good o.doc", 1, "o.doc: unknown ending; known: html, odt, pdf, txt\n"},
    {"no ending", "zemscript import good", 2, "-: unknown ending; known: html, odt, pdf, txt, told by --to"},
    {"no rich text", "zemscript export good o", 1, "good: unknown ending; known: html\n"},
    {"no place", "zemscript import good none/o.pdf", 1, "none/o.pdf: cannot be written"},
    {"onto a folder", "zemscript export in.html folder", 1, "folder: is a folder"},
    {"full device", "zemscript elements good > /dev/full", 1, "standard output: cannot be written"},
    {"no face", "FONTCONFIG_FILE=$PWD/nfew.conf zemscript import good o.pdf", 1, "there is no face to print with; install a typewriter face"},
    {"no letters of the script", "ln -s \"$(fc-match -f %{file} monospace)\" folder && FONTCONFIG_FILE=$PWD/few.conf zemscript import lines o.pdf", 1,
     "no face has these letters: Khmer, U+10600; install"},
    {"no display", "zemscript edit good", 1, "edit: there is no usable display"},
    {"an invisible one", "QT_QPA_PLATFORM=offscreen zemscript edit", 1, "edit: there is no usable display"},
    {"no such platform", "QT_QPA_PLATFORM=none zemscript edit", 1, "edit: there is no usable display"},
    {"no command", "zemscript ", 2, "no command"},
    {"unknown command", "zemscript edti", 2, "edti: no such command"},
    {"help on an unknown command", "zemscript help edti", 2, "edti: no such command"},
    {"files missing", "zemscript import", 2, "import: takes SCRIPT [OUT]; see"},
    {"too many files", "zemscript elements a b", 2, "elements: takes SCRIPT; see"},
    {"or to edit", "zemscript edit a b", 2, "edit: takes [SCRIPT]; see"},
    {"unknown option", "zemscript import a b --wide", 2, "wide"},
    {"help of Qt's own options", "zemscript --help-all", 2, "help-all"},
    {"option of another command", "zemscript export a b --paper a4", 2, "export: Unknown option 'paper'"},
    {"unknown format", "zemscript import a b --to doc", 2, "doc: unknown format; known: html, odt, pdf, txt"},
    {"unknown paper", "zemscript import a b --paper A5", 2, "A5: unknown paper; known: letter, a4"},
    {"plain text of pages", "zemscript import good o.txt --plain", 2, "txt: pages are not made by --plain"},
    {"plain pages", "zemscript import good o.pdf --plain", 2, "pdf: pages are not made by --plain"},
};
// clang-format on

} // namespace

class HostTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The names of the program and of its platform are the lines' own.
        qputenv("PATH",
                QFileInfo(QStringLiteral(ZEMSCRIPT)).path().toLocal8Bit() + ':' + qgetenv("PATH"));
        for (const char *name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"})
            qunsetenv(name);
    }

    void init()
    {
        m_folder.reset(new QTemporaryDir);
        QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
        const QByteArray folder = path(u"folder"_s).toUtf8();
        const std::pair<const char *, QByteArray> files[] = {
            {"good", "Anna enters.\n"},
            {"all", "Author: Z\nTitle: A\n\nINT. B #1#\n\n> ***_c_*** <\n\nd\\\n\n## e\n\n"},
            {"plain", "INT. B #1#\n\nc\n\n"},
            {"lines", u"\U00010600\u1780 a\n"_s.toUtf8()},
            {"in.html", "<p>x</p>"},
            {"o.html", "older"},
            {"nfew.conf", "<fontconfig></fontconfig>"},
            {"few.conf", "<fontconfig><dir>" + folder + "</dir></fontconfig>"},
            {"mac", "\xEF\xBB\xBFINT. A\r\rb\r"},
            {"latin", "Caf\n\xE9 b\n"},
            {"it's", QByteArray("\xFF\xFE\x61\0", 4)},
            {"wide", QByteArray("a\0\n\0", 4)},
            {"Wide", QByteArray("\0a\0\n", 4)},
            {"short", "ab\xEF\xBF"},
            {"mark", "\xEF\xBB\xBFxy\xED\xA0\x80"},
        };
        for (const auto &file : files)
            create(path(QLatin1String(file.first)), file.second);
    }

    void answers_data() { addIndices(calls); }
    void answers()
    {
        QFETCH(int, index);
        const Call &call = calls[index];
        if (QByteArray(call.line).contains("fc-match")
            && QStandardPaths::findExecutable(u"fc-match"_s).isEmpty())
            QSKIP("needs fc-match");
        QByteArray error;
        int code = -1;
        const QByteArray out = run(call.line, &error, &code);
        QVERIFY2(code == call.code, error);
        QCOMPARE(out, call.code == 0 ? QByteArray(call.words) : QByteArray());
        QVERIFY2(call.code == 0 || error.contains(call.words), error);
        QCOMPARE(error.count('\n'), call.code == 0 ? 0 : 1);
        QCOMPARE(contents(path(u"o.html"_s)), QByteArray("older"));
    }

    void htmlPassesAChecker()
    {
        if (QStandardPaths::findExecutable(u"tidy"_s).isEmpty())
            QSKIP("needs tidy");
        QCOMPARE(run("zemscript import all --to html | tidy -e -q 2>&1"), QByteArray());
    }

    void helpAndManPageAgree()
    {
        const QString help = QString::fromUtf8(run("zemscript --help"));
        QString manual = QString::fromUtf8(contents(QStringLiteral(MANUAL)));
        manual.remove(u'\\');
        const QRegularExpression term(u"^  \\w+|--\\w+|\\w+(?=, )"_s,
                                      QRegularExpression::MultilineOption);
        int terms = 0;
        for (auto match = term.globalMatch(help); match.hasNext(); ++terms) {
            const QString word = match.next().captured();
            QVERIFY2(manual.contains(word.simplified().section(u' ', 0, 0)), qPrintable(word));
        }
        QVERIFY(terms > 12);
        QVERIFY(help.contains(u"\n  import SCRIPT [OUT]   Takes"_s)
                && help.contains(u"\n  edit [SCRIPT]         Opens"_s));
        for (const QString &line : help.split(u'\n'))
            QVERIFY2(line.size() <= 80, qPrintable(line));
        QVERIFY(run("zemscript help export").contains("export RICHTEXT [OUT]"));
        QVERIFY(run("zemscript help export").contains("--plain"));
        QVERIFY(!run("zemscript help export").contains("--to"));
        QCOMPARE(run("zemscript export --help"), run("zemscript help export"));
    }

    void shortWriteLeavesTheOlderFile()
    {
        for (const int most : {0, 1, 99}) {
            const SizeLimit limit(most);
            QString error;
            QVERIFY(!Host::saveBytes(path(u"o.html"_s), QByteArray(100, 'x'), &error));
            QVERIFY2(error.endsWith(u"/o.html: cannot be written: File too large"_s),
                     qPrintable(error));
            QCOMPARE(contents(path(u"o.html"_s)), QByteArray("older"));
            QCOMPARE(QDir(m_folder->path()).entryList({u"o*"_s}), QStringList{u"o.html"_s});
        }
    }

    void savedAgainIsTheSameFile_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("LF") << QByteArray("a\n\nb") << u"a\n\nb"_s;
        QTest::newRow("CR LF") << QByteArray("a\r\n\r\nb\r\n") << u"a\n\nb\n"_s;
        QTest::newRow("CR") << QByteArray("a\r\rb\r") << u"a\n\nb\n"_s;
        QTest::newRow("one line") << QByteArray("a\0b", 3) << QString(u"a\0b"_s);
        QTest::newRow("two marks") << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBF\r") << u"\uFEFF\n"_s;
    }

    void savedAgainIsTheSameFile()
    {
        QFETCH(QByteArray, bytes);
        create(path(u"s"_s), bytes);
        QString text, error;
        Host::TextForm form;
        QVERIFY2(Host::readText(path(u"s"_s), &text, &error, &form), qPrintable(error));
        QTEST(text, "text");
        QCOMPARE(Host::toBytes(text, form), bytes);
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    /// What \a line writes to standard output, run in the folder.
    QByteArray run(const QByteArray &line, QByteArray *error = nullptr, int *code = nullptr)
    {
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(u"sh"_s, {u"-c"_s, QString::fromUtf8(line)});
        process.waitForFinished();
        if (code && process.exitStatus() == QProcess::NormalExit)
            *code = process.exitCode();
        if (error)
            *error = process.readAllStandardError();
        return process.readAllStandardOutput();
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(HostTest)
#include "tst_host.moc"
