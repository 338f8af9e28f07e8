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

/// What a base library gives for a name, at its \a call, counted from 1.
using Base = ZEMScriptElement (*)(const QString &name, int call);

struct LookupRow
{
    const char *name;
    Base base;
    std::u16string_view input;    ///< the elements
    std::u16string_view expected; ///< the margins of their blocks, and the names looked up
};

ZEMScriptElement withMargin(const QString &name, int margin)
{
    return recordOf(name + u" m"_s + QString::number(margin));
}

// clang-format off
ZEMScriptElement any(const QString &name, int call) { return withMargin(name, call); }
ZEMScriptElement none(const QString &, int) { return {}; }
ZEMScriptElement other(const QString &, int call) { return withMargin(u"Other"_s, call); }
ZEMScriptElement unnamed(const QString &, int) { return withMargin(QString(), 5); }
ZEMScriptElement nameless(const QString &name, int) { return name.isEmpty() ? withMargin(u"Nameless"_s, 9) : withMargin(name, 1); }

const LookupRow lookupRows[] = {
    {"each change of the name", any, u"Action\nAction|b|x\nNotes\nNotes\nAction", u"1 1 2 2 3, Action Notes Action"},
    {"again behind a failed one", none, u"Notes\nNotes\nAction", u"0 0 0, Notes Notes Action"},
    {"none for a nameless type at first", any, u"13\n-1\nAction\n13\n-1", u"0 0 1 0 0, Action "},
    {"empty name that is answered", nameless, u"13\nAction\n13\n13", u"0 1 9 9, Action  "},
    {"record under another name", other, u"Action\nAction\nAction", u"1 2 3, Action Action Action"},
    {"record without a name is not merged", unnamed, u"Action\nAction", u"0 0, Action Action"},
};
// clang-format on

Base baseInForce = none;
QStringList asked;
int askedBlocks = 0;

QString rendered(const QString &lines)
{
    QFnDocument source(nullptr);
    appendElements(lines, &source);
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

Q_DECLARE_METATYPE(Base)

ZEMScriptElement ZEMScriptElement::find(const QList<ZEMScriptElement> &, const QString &name)
{
    asked += name;
    return baseInForce(name, int(asked.size()));
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
    void lookupsOfAnImport_data()
    {
        QTest::addColumn<Base>("base");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("expected");
        for (const LookupRow &row : lookupRows)
            QTest::newRow(row.name) << row.base << textOf(row.input) << textOf(row.expected);
    }
    void lookupsOfAnImport()
    {
        QFETCH(Base, base);
        baseInForce = base;
        asked.clear();
        check(rendered);
    }

    void lookupForEachBlockOfAnExport()
    {
        QTextDocument document(u"Nx\n\nx"_s);
        QTextCursor(&document).insertText(u"N"_s, recordOf(u" w75"_s).charFormat);
        QFnDocument target(nullptr);
        ZemFountain::toFountainDocument(document, {}, &target, nullptr);
        QCOMPARE(askedBlocks, 3);
        QCOMPARE(dump(target), u"Notes|b|N\nNotes||Nx\nUndefined||\nUndefined||x"_s);
    }
};

QTEST_GUILESS_MAIN(LookupsTest)
#include "tst_lookups.moc"
