// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "files.h"
#include "fuzz/scripts.h"
#include "host/reading.h"
#include "rows.h"

namespace {

using Host::Paragraph;
using Host::Stretch;

/// A stretch as its text, in braces with its look if it has one: "{b bold}", "{note [[n]]}".
QString lookOf(const Stretch &stretch)
{
    QString look = u"b"_s.repeated(stretch.emphasis & Stretch::Bold ? 1 : 0);
    look += u"i"_s.repeated(stretch.emphasis & Stretch::Italic ? 1 : 0);
    look += u"u"_s.repeated(stretch.emphasis & Stretch::Underline ? 1 : 0);
    if (stretch.working)
        look += stretch.working == QFnElement::Notes ? u"note"_s : u"comment"_s;
    const QString text = QString(stretch.text).replace(QChar(QChar::LineSeparator), u'|');
    return look.isEmpty() ? text : u"{%1 %2}"_s.arg(look, text);
}

/// A line for each paragraph: kind, what else there is to tell, text. Blank lines are "-".
QString listed(const QVector<Paragraph> &script)
{
    QStringList lines;
    for (const Paragraph &p : script) {
        QString line = p.titlePage ? u"Title"_s : QFnElement::toString(p.type).remove(u' ');
        line += u" centred"_s.repeated(p.centred);
        if (p.depth > 0)
            line += u" %1"_s.arg(p.depth);
        if (!p.sceneNumber.isEmpty())
            line += u" #"_s + p.sceneNumber;
        line += u": "_s;
        for (const Stretch &stretch : p.stretches)
            line += lookOf(stretch);
        lines.append(line == u"Action: "_s ? u"-"_s : line);
    }
    return lines.join(u'\n');
}

} // namespace

class ReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data() { addCases({u"reading"_s}); }
    void reads()
    {
        check([](const QString &script) { return listed(Host::read(script)); });
    }

    void comesBack_data() { addCases({u"reading"_s}); }
    void comesBack()
    {
        QFETCH(QString, input);
        QCOMPARE(comeBack(input), input);
        const QString noLineEnd = input.chopped(input.endsWith(u'\n') ? 1 : 0);
        QCOMPARE(comeBack(noLineEnd), noLineEnd);
    }

    void madeScriptsComeBack()
    {
        for (quint32 seed = 0; seed < 2000; ++seed) {
            const QString script = madeScript(seed);
            if (comeBack(script) != script) {
                const QString least = shrunk(script);
                qWarning("script %u", seed);
                QCOMPARE(comeBack(least), least);
            }
        }
    }

    /// Rich text without any message reads back as it is.
    void madeRichTextComesBack()
    {
        int told = 0;
        for (quint32 seed = 0; seed < 2000; ++seed) {
            bool isTold = false;
            QCOMPARE(silentChange(seed, &isTold), QString());
            told += isTold ? 1 : 0;
        }
        QVERIFY(told < 1800);
    }

    void examplesComeBack()
    {
        for (const QString &name : {u"/the-lamp-keeper"_s, u"/two-hander"_s}) {
            const QByteArray script = contents(QStringLiteral(EXAMPLES) + name + u".fountain"_s);
            // Rich text of more than one part, whose borders come between paragraphs of all kinds.
            const QString longer = QString::fromUtf8(script).repeated(150);
            QVERIFY(longer.size() > 100000);
            QTextDocument document;
            Host::importScript(longer, &document);
            QStringList messages;
            QString html = document.toHtml();
            QVERIFY(Host::exportHtml(html, &messages) == longer && messages.isEmpty());
            html.insert(html.indexOf(u"\n<p "_s), u"<p>x</p>"_s);
            const QString edited = Host::exportHtml(html);
            QVERIFY(edited.startsWith(u"x\n"_s) && !edited.contains(u"\nx\n"_s));
        }
        // HTML of somebody else has no such parts.
        QCOMPARE(Host::exportHtml(u"<html><body><p>a</p><p>b</p></body></html>"_s), u"a\n\nb\n"_s);
    }

    void olderHtmlIsRead_data() { addCases({u"reading-html"_s}); }
    void olderHtmlIsRead()
    {
        check([](const QString &html) {
            QStringList messages;
            const QString script = Host::exportHtml(html, &messages);
            return script + messages.join(u'\n');
        });
    }

    void exportNamesWhatHasNoForm_data() { addCases({u"reading-messages"_s}); }
    void exportNamesWhatHasNoForm()
    {
        check([](const QString &paragraphs) {
            QTextDocument document;
            QTextCursor cursor(&document);
            for (const QString &line : paragraphs.split(u'\n')) {
                const QString kind = line.section(u": "_s, 0, 0);
                cursor.insertBlock(ZEMScriptElement::find(Host::records(), kind).blockFormat, {});
                cursor.insertHtml(line.section(u": "_s, 1));
            }
            cursor.movePosition(QTextCursor::Start);
            cursor.deleteChar(); // the block that each document begins with
            QStringList messages;
            const QString script = Host::exportScript(document, &messages);
            return script + messages.join(u'\n');
        });
    }

    /// Reading, import and export take time in proportion to the length: no row takes two seconds.
    void longScriptsComeBackInTime_data() { addCases({u"reading-long"_s}); }
    void longScriptsComeBackInTime()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const QString longer = input + expected.repeated(100000) + u'#';
        const QString shorter = input + expected.repeated(20000);
        QElapsedTimer timer;
        timer.start();
        QVector<Paragraph> script = Host::read(longer);
        QVERIFY(Host::written(&script) == longer);
        QTextDocument document;
        Host::importScript(shorter, &document);
        QVERIFY(Host::exportHtml(document.toHtml()) == shorter);
        QVERIFY(timer.elapsed() < 10000);
    }
};

QTEST_MAIN(ReadingTest)
#include "tst_reading.moc"
