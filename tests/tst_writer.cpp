// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "writer/qfnwriter.h"

#include "elements.h"
#include "files.h"

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>

namespace {

/// A writer and what it wrote.
struct Output
{
    Output() { buffer.open(QIODevice::WriteOnly); }

    QBuffer buffer;
    QFnWriter writer{&buffer};
};

QString written(const QString &lines)
{
    QFnDocument document(nullptr);
    appendElements(lines, &document);
    Output output;
    return output.writer.write(&document) ? QString::fromUtf8(output.buffer.data()) : u"failed"_s;
}

QString styled(const QString &lines)
{
    Output output;
    for (const QString &line : lines.split(u'\n')) {
        const QFnElement element = elementOf(line);
        line == u"end"_s ? output.writer.finalizeLastElementStyle()
                         : output.writer.writeElementText(&element);
    }
    return QString::fromUtf8(output.buffer.data());
}

} // namespace

class WriterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void forms_data() { addCases({u"writer-forms"_s}); }
    void forms() { check(written); }
    void styledText_data() { addCases({u"writer-styles"_s}); }
    void styledText() { check(styled); }

    void onlyTypeAndTextAreWritten()
    {
        QFnDocument document(nullptr);
        document.titlePage.insert(u"Title"_s, u"A"_s);
        appendElements(u"SceneHeading||a\n||b"_s, &document);
        document.elements.first()->sceneNumber = u"1"_s;
        Output output;
        QFnWriter &writer = output.writer;
        QVERIFY(writer.device == &output.buffer && !writer.document
                && writer.errorString.isEmpty());
        writer.style.bold = true; // the walk closes what stands open
        QVERIFY(writer.write(&document));
        QVERIFY(!writer.document && !writer.write(nullptr) && !writer.writeDocument());
        QCOMPARE(output.buffer.data(), QByteArray("**\n.a\nb"));
    }

    void fileIsWritten()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath(u"a.fountain"_s);
        QFile other(path);
        QFnDocument document(nullptr);
        appendElements(u"Action||\u00e9"_s, &document);
        QFnWriter writer(&other);
        QVERIFY(!writer.writeFile(dir.path(), &document));
        const QString error = writer.errorString;
        QVERIFY(!error.isEmpty() && writer.device == &other);
        QVERIFY(writer.writeFile(path, &document));
        QVERIFY(!writer.device && writer.errorString == error);
        QCOMPARE(contents(path), QByteArray("\n\xC3\xA9"));
        {
            const SizeLimit none(0);
            QVERIFY(writer.writeFile(path, &document)); // a full disk is not noticed
        }
        QVERIFY(!writer.writeFile(path, nullptr));
        QCOMPARE(contents(path), QByteArray());
    }
};

QTEST_GUILESS_MAIN(WriterTest)
#include "tst_writer.moc"
