// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"
#include "host/files.h"
#include "host/importing.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtGui/QTextDocument>

#include <csignal>
#include <sys/resource.h>

namespace {

struct Outcome
{
    int code = -1;
    QByteArray out, err;
};

Outcome run(const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral(ZEMSCRIPT), arguments);
    Outcome outcome;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        outcome.code = process.exitCode();
    outcome.out = process.readAllStandardOutput();
    outcome.err = process.readAllStandardError();
    return outcome;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void create(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

/// The parsed script without what has no place in the rich text.
QString script(const QString &text)
{
    QFnFastParser parser(nullptr);
    parser.parse(text);
    return dump(*parser.document)
        .remove(QRegularExpression(u"\\|(#.*|depth \\d+)$"_s, QRegularExpression::MultilineOption));
}

// clang-format off
// A script and the file that comes back, the same script to the parser.
const Row wayBackRows[] = {
    {"nothing", u"", u"\n\n"},
    {"paragraphs and more than one blank line", u"A b.\n\nC d.\n\n\n\nE f.\n", u"A b.\n\nC d.\n\n\n\nE f.\n\n"},
    {"lines of a paragraph", u"A b.\nC d.\n", u"A b.C d.\n\n"},
    {"emphasis", u"A *b* **c _d_** e\n\n***f***\n\n_g_\n\n", u"A *b* **c _d_** e\n\n***f***\n\n_g_\n\n"},
    {"centred", u"A b.\n\n> c *d* <\n\nE f.\n", u"A b.\n\n> c *d* <\n\nE f.\n\n"},
    {"headings", u"INT. A - DAY\n\nb c\n\n.d e\n\nint/ext f\n\n", u"INT. A - DAY\n\nb c\n\n.d e\n\nint/ext f\n\n"},
    {"speech", u"ANNA\n(low)\nHi (to B) you.\nBye.\n\nBEN (O.S.)\nNo.\n", u"ANNA\n(low)\nHi \n(to B)\n you.\nBye.\n\nBEN (O.S.)\nNo.\n"},
    {"cue and action", u"ANNA\n!Leaves.\n\nx y", u"ANNA\n!Leaves.\n\nx y\n\n"},
    {"cue at the end", u"A b.\n\nTHE END", u"A b.\n\nTHE END\n"},
    {"one-line kinds", u"> OUT\n\n# One\n\n= *two* x\n\n= y\n\nCUT TO:\n\n", u"> OUT\n\n# One\n\n= \n\n=*two*\n\n= x\n\n= y\n\n>CUT TO:\n\n"},
    {"action that looks like another kind", u"!CUT TO:\n\n!INT. A\n\n!# b\n\n!Title: c\n\n!> d <\n\n!!e\n\n!=== f\n\n",
     u"!CUT TO:\n\n!INT. A\n\n!# b\n\n!Title: c\n\n!> d <\n\n!!e\n\n!=== f\n\n"},
    {"capitals that are no cue", u"Mr. X\n\nDARK.\n\nANNA\nHi.\n", u"Mr. X\n\nDARK.\n\nANNA\nHi.\n"},
    {"notes in a line and apart", u"A [[b]] c. [[d]]\n\nE.\n\n[[f g]]\n\n[[h]] i\n", u"A [[b]] c. [[d]]\n\nE.\n\n[[f g]]\n\n[[h]] i\n\n"},
    {"comments", u"A b.\n\n/*\nc\n\nd\n*/\n\nE f.\n", u"A b.\n\n/*\nc\n\nd\n*/\n\nE f.\n\n"},
    {"comment in a line", u"A b.\n\nC/* d */ e.\n\nF g.\n", u"A b.\n\n/* d */C e.\n\nF g.\n\n"},
    {"page break", u"A b.\n\n===\n\nINT. C\n\n", u"A b.\n\n===\n\nINT. C\n\n"},
    {"title page", u"Author: B\nTitle: A\nDraft date: 1\nContact:\n    c\n    d\n\nE f.\n",
     u"Title: A\nAuthor: B\nDraft date: 1\nContact: c\n    d\n\nE f.\n\n"},
    {"blanks, marks and letters", u"  a  <b> & \u00e9\u00a0\U0001F600 \n\nANNA\nx\ty  z*w_v*\n", u"  a  <b> & \u00e9\u00a0\U0001F600 \n\nANNA\nx\ty  z*w_v*\n"},
};
// clang-format on

struct Refusal
{
    const char *name;
    QStringList arguments;
    int code;
    const char *message;
};

const Refusal refusals[] = {
    {"missing", {u"import"_s, u"none"_s, u"o.html"_s}, 1, "none: no such file"},
    {"folder", {u"import"_s, u"folder"_s, u"o.html"_s}, 1, "folder: is a folder"},
    {"no UTF-8", {u"import"_s, u"latin"_s, u"o.html"_s}, 1, "latin: is not UTF-8 at byte 4,"},
    {"cut short", {u"elements"_s, u"short"_s}, 1, "short: is not UTF-8 at byte 2,"},
    {"lone surrogate", {u"elements"_s, u"mark"_s}, 1, "mark: is not UTF-8 at byte 5,"},
    {"unknown ending", {u"import"_s, u"good"_s, u"o.doc"_s}, 1, "o.doc: unknown ending"},
    {"no rich text", {u"export"_s, u"good"_s, u"o"_s}, 1, "good: unknown ending"},
    {"no place", {u"import"_s, u"good"_s, u"none/o.pdf"_s}, 1, "none/o.pdf: cannot be written"},
    {"onto a folder", {u"export"_s, u"in.html"_s, u"folder"_s}, 1, "folder: is a folder"},
    {"UTF-16",
     {u"elements"_s, u"it's"_s},
     1,
     "it's: is UTF-16LE, not UTF-8, at byte 0, counted from 0; mend it with: iconv -f UTF-16LE -t "
     "UTF-8 'it'\\''s'\n"},
    {"no command", {}, 2, "no command"},
    {"unknown command", {u"edti"_s}, 2, "edti: no such command"},
    {"files missing", {u"import"_s, u"good"_s}, 2, "import: takes 2 file names"},
    {"unknown option", {u"--wide"_s}, 2, "wide"},
};

} // namespace

class TestHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.reset(new QTemporaryDir);
        QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
        create(path(u"good"_s), "Anna enters.\n");
        create(path(u"in.html"_s), "<p>x</p>");
        create(path(u"latin"_s), "Caf\n\xE9 b\n");
        create(path(u"it's"_s), QByteArray("a\0\n\0", 4));
        create(path(u"short"_s), "ab\xEF\xBF");
        create(path(u"mark"_s), "\xEF\xBB\xBF"
                                "ab\xED\xA0\x80");
    }

    void refuses_data()
    {
        QTest::addColumn<int>("row");
        for (const Refusal &refusal : refusals)
            QTest::newRow(refusal.name) << int(&refusal - refusals);
    }

    void refuses()
    {
        QFETCH(int, row);
        const Outcome outcome = run(refusals[row].arguments, m_folder->path());
        QCOMPARE(outcome.code, refusals[row].code);
        QVERIFY2(outcome.err.contains(refusals[row].message), outcome.err);
        QCOMPARE(outcome.err.count('\n'), 1);
        QCOMPARE(outcome.out, QByteArray());
    }

    void failureLeavesTheOlderFile()
    {
        create(path(u"o.html"_s), "older");
        QCOMPARE(run({u"import"_s, u"latin"_s, u"o.html"_s}, m_folder->path()).code, 1);
        QCOMPARE(contents(path(u"o.html"_s)), QByteArray("older"));
    }

    void shortWriteLeavesTheOlderFile()
    {
        create(path(u"o"_s), "older");
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before;
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
        for (const int most : {0, 1, 99}) {
            const rlimit limit = {rlim_t(most), before.rlim_max};
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
            QString error;
            const bool saved = Host::saveBytes(path(u"o"_s), QByteArray(100, 'x'), &error);
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
            QVERIFY(!saved);
            QVERIFY2(error.endsWith(u"/o: cannot be written: File too large"_s), qPrintable(error));
            QCOMPARE(contents(path(u"o"_s)), QByteArray("older"));
            QCOMPARE(QDir(m_folder->path()).entryList({u"o*"_s}), QStringList{u"o"_s});
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
        QTest::newRow("mark") << QByteArray("\xEF\xBB\xBF"
                                            "a")
                              << u"a"_s;
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

    void wayBack_data() { addRows(wayBackRows); }

    void wayBack()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const QString back = thereAndBack(input.toUtf8());
        QCOMPARE(back, expected);
        QCOMPARE(script(back), script(input));
    }

    void examplesComeBack()
    {
        const QDir examples(QStringLiteral(EXAMPLES));
        const QStringList names = examples.entryList({u"*.fountain"_s});
        QVERIFY(!names.isEmpty());
        for (const QString &name : names) {
            const QByteArray text = contents(examples.filePath(name));
            QCOMPARE(script(thereAndBack(text)), script(QString::fromUtf8(text)));
        }
    }

    void byteOrderMarkAndLineEndsGo()
    {
        create(path(u"dos"_s), "\xEF\xBB\xBFINT. A\r\n\r\nb\r\n");
        const Outcome outcome = run({u"elements"_s, u"dos"_s}, m_folder->path());
        QCOMPARE(outcome.out, QByteArray("Scene Heading   \"A\"\nAction          \"b\"\n"));
    }

    void elementsShowsAllThatIsSet()
    {
        create(path(u"all"_s), "Title: A\n\nINT. B #1#\n\n> ***_c_*** <\n\nd\n\n## e\n\n");
        const Outcome outcome = run({u"elements"_s, u"all"_s}, m_folder->path());
        QCOMPARE(outcome.out, QByteArray("Title Page      \"Title\": \"A\"\n"
                                         "Scene Heading   \"B \" number \"1\"\n"
                                         "Action          \"c\" bold italic underline centred\n"
                                         "Action          \"\" centred\n"
                                         "Action          \"d\"\n"
                                         "Section Heading \"e\" depth 2\n"
                                         "Undefined       \"\"\n"));
    }

    void pages_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("pages");
        const QByteArray full = QByteArray("a b\n\n").repeated(26); // 51 lines of 54
        QTest::newRow("empty") << QByteArray() << 1;
        QTest::newRow("title page") << QByteArray("Title: A\n\nb c\n") << 2;
        QTest::newRow("page break") << QByteArray("a b\n\n===\n\nc d\n") << 2;
        QTest::newRow("full") << full + "a b\n" << 1;
        QTest::newRow("heading goes with its scene") << full + "INT. A\n\n" + full << 2;
        QTest::newRow("cue goes with its speech") << full + "ANNA\nB.\n\n" + full << 2;
        QTest::newRow("notes are left out") << full + "[[a b]]\n\n= c\n\n# d\n\n" << 1;
    }

    void pages()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, pages);
        create(path(u"s"_s), text);
        QCOMPARE(run({u"import"_s, u"s"_s, u"o.pdf"_s}, m_folder->path()).code, 0);
        QCOMPARE(contents(path(u"o.pdf"_s)).count("/Type /Page\n"), pages);
    }

    void importIsOneStepOfUndo()
    {
        QTextDocument document;
        Host::importScript(u"Title: A\n\nB *c* d.\n\n\nE f.\n"_s, &document);
        document.undo();
        QVERIFY(document.isEmpty() && !document.isUndoAvailable());
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QString thereAndBack(const QByteArray &text)
    {
        create(path(u"s"_s), text);
        for (const QStringList &arguments : {QStringList{u"import"_s, u"s"_s, u"s.html"_s},
                                             QStringList{u"export"_s, u"s.html"_s, u"back"_s}}) {
            const Outcome outcome = run(arguments, m_folder->path());
            if (outcome.code != 0)
                return QString::fromUtf8(outcome.err);
        }
        return QString::fromUtf8(contents(path(u"back"_s)));
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

QTEST_MAIN(TestHost)
#include "tst_host.moc"
