// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "files.h"
#include "host/files.h"
#include "rows.h"

#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

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
        create(path(u"good"_s), "Anna enters.\n");
        create(path(u"all"_s), "Author: Z\nTitle: A\nAuthor: Y\n\nINT. B #1#\n\n> ***_c_*** <\n\n"
                               "d\\\n\n## e\n\n");
        create(path(u"plain"_s), "INT. B #1#\n\nc\n\n");
        create(path(u"in.html"_s), "<p>x</p>");
        create(path(u"o.html"_s), "older");
    }

    void answers_data() { addCases({u"host-calls"_s}); }
    void answers()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        for (const QString &tool : {u"fc-match"_s, u"unzip"_s, u"tidy"_s}) {
            if (input.contains(tool) && QStandardPaths::findExecutable(tool).isEmpty())
                QSKIP(qPrintable(u"needs "_s + tool));
        }
        QString error;
        int code = -1;
        const QString out = run(input, &error, &code);
        QVERIFY2(code == expected.section(u' ', 0, 0).toInt(), qPrintable(error));
        const QString words = expected.section(u' ', 1);
        QCOMPARE(out, code == 0 ? words : QString());
        QCOMPARE(error, code == 0 ? QString() : u"zemscript: %1\n"_s.arg(words));
        QCOMPARE(contents(path(u"o.html"_s)), QByteArray("older"));
    }

    void helpAndManPageAgree()
    {
        const QString help = run(u"zemscript --help"_s);
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
        for (const QString &line : help.split(u'\n'))
            QVERIFY2(line.size() <= 80, qPrintable(line));
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

    void savedAgainIsTheSameFile_data() { addCases({u"host-files"_s}); }
    void savedAgainIsTheSameFile()
    {
        QFETCH(QString, input);
        create(path(u"s"_s), input.toUtf8());
        QString text, error;
        Host::TextForm form;
        QVERIFY2(Host::readText(path(u"s"_s), &text, &error, &form), qPrintable(error));
        QTEST(text, "expected");
        QCOMPARE(Host::toBytes(text, form), input.toUtf8());
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    /// What \a line writes to standard output, run in the folder.
    QString run(const QString &line, QString *error = nullptr, int *code = nullptr)
    {
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(u"sh"_s, {u"-c"_s, line});
        process.waitForFinished();
        if (code && process.exitStatus() == QProcess::NormalExit)
            *code = process.exitCode();
        if (error)
            *error = QString::fromUtf8(process.readAllStandardError());
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(HostTest)
#include "tst_host.moc"
