// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

// A base library of the application's own in place of the stand-in: its look-ups may answer any
// name by any record. They are defined here, and a program's own take the place of a library's.

#include "bridge/ZemFountain.h"

#include "dump.h"
#include "elements.h"
#include "formats.h"

#include <QtGui/QTextCursor>

namespace {

QList<ZEMScriptElement> answers;
QStringList asked;
int askedBlocks = 0;

/// The margins of the blocks that elements give, and the names that were looked up. The first line
/// of the input holds the records that the look-ups give, one a call.
QString rendered(const QString &input)
{
    asked.clear();
    answers = recordsOf(input.section(u'\n', 0, 0));
    QFnDocument source(nullptr);
    appendElements(input.section(u'\n', 1), &source);
    for (QFnElement *element : qAsConst(source.elements))
        element->text = u"x"_s;
    QTextDocument document;
    ZEMFountainDocumentRenderer().render(source, &document);
    QStringList margins;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        margins += QString::number(block.blockFormat().leftMargin());
    return margins.join(u' ') + u", "_s + asked.join(u' ');
}

} // namespace

ZEMScriptElement ZEMScriptElement::find(const QList<ZEMScriptElement> &, const QString &name)
{
    asked += name;
    return answers.value(asked.size() - 1);
}

ZEMScriptElement ZEMScriptElement::find(const QList<ZEMScriptElement> &, const QTextBlock &block)
{
    ++askedBlocks;
    return recordOf(block.text().left(1) == u"N"_s ? u"Notes"_s : QString());
}

class LookupsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lookupsOfAnImport_data() { addCases({u"lookups"_s}); }
    void lookupsOfAnImport() { check(rendered); }

    void lookupForEachBlockOfAnExport()
    {
        QTextDocument document(u"Nx\n\nx"_s);
        QTextCursor(&document).insertText(u"N"_s, recordOf(u"=w75"_s).charFormat);
        QFnDocument target(nullptr);
        ZemFountain::toFountainDocument(document, {}, &target, nullptr);
        QCOMPARE(askedBlocks, 3);
        QCOMPARE(dump(target), u"Notes|b|N\nNotes||Nx\nUndefined||\nUndefined||x"_s);
    }
};

QTEST_GUILESS_MAIN(LookupsTest)
#include "tst_lookups.moc"
