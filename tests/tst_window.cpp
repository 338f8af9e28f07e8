// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/files.h"
#include "host/highlighter.h"
#include "host/pagesview.h"
#include "host/records.h"
#include "host/recovery.h"
#include "host/richtext.h"
#include "host/scripteditor.h"
#include "host/window.h"

#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QDropEvent>
#include <QtGui/QTextBlock>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>

#include <csignal>
#include <sys/resource.h>

namespace {

const QString example = QStringLiteral(EXAMPLES "/the-lamp-keeper.fountain");
constexpr char killedVariable[] = "TST_WINDOW_KILLED";
const QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/// Presses a button of the question that comes up next, and keeps its text in \a text.
void answerNext(QMessageBox::StandardButton button, QString *text = nullptr)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!question)
            return;
        timer->stop();
        timer->deleteLater();
        if (text)
            *text = question->text();
        question->button(button)->click();
    });
    timer->start(5);
}

/// Types \a name into the dialogue for a file that comes up next.
void nameNext(const QString &name)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer->stop();
        timer->deleteLater();
        auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        edit->selectAll();
        QTest::keyClicks(edit, name);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    timer->start(200); // The dialogue has listed its folder by then.
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// Files of more than this many bytes can't be written while it lives.
class SizeLimit
{
public:
    explicit SizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before;
};

} // namespace

class WindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Not the user's own data, nor those of this test where it runs at the same time.
        if (!qEnvironmentVariableIsSet(killedVariable))
            qputenv("XDG_DATA_HOME", m_data.path().toLocal8Bit());
    }

    void init()
    {
        m_folder.reset(new QTemporaryDir);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder->path());
        if (!qEnvironmentVariableIsSet(killedVariable))
            copies().removeRecursively();
        showNew();
    }

    void cleanup() { m_window.reset(); }

    void bytesAreKept_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("line feeds, none at the end") << QByteArray("INT. A\n\nb");
        QTest::newRow("CR LF") << QByteArray("INT. A\r\n\r\nb\r\n");
        QTest::newRow("lone CR") << QByteArray("INT. A\r\rb\r");
        QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbfINT. A\r\n");
        QTest::newRow("blanks, also that do not break")
            << QByteArray("  a\xc2\xa0\t \n\n\n\n @x~^");
    }
    void bytesAreKept()
    {
        QFETCH(QByteArray, bytes);
        write(path(), bytes);
        open(path());
        type(s("x"), Qt::Key_Backspace);
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(bytesOf(path()), bytes);
        QVERIFY(!m_window->isWindowModified());
    }

    void typedTextIsReadAndFollowed()
    {
        type(s("INT. HALL - DAY #12A#"), Qt::Key_Return);
        type(s("\nA **loud** [[why?]] door.\n\nANNA\nWho is it?\n"));
        QTRY_COMPARE(m_pages->document()->blockCount() >= 4, true);
        QTRY_VERIFY(m_pages->toPlainText().contains(s("Who is it?")));
        const QTextBlock heading = m_editor->document()->firstBlock();
        QTRY_VERIFY(!heading.layout()->formats().isEmpty());
        QVERIFY(heading.layout()->formats().first().format.fontWeight() >= QFont::Bold);
        QVERIFY(formatAt(s("loud")).fontWeight() >= QFont::Bold);
        QCOMPARE(formatAt(s("[[why")).foreground() == formatAt(s("A ")).foreground(), false);
        QCOMPARE(m_scenes->model()->index(0, 0).data().toString(), s("12A  INT. HALL - DAY"));
        // Once undone it is all as before: nothing but what was typed is in the history.
        goTo(s("ANNA"));
        QCOMPARE(markedText(), s("ANNA"));
        goTo(s("Who is"));
        QCOMPARE(markedText(), s("Who is it?"));
        const QString status = placeText();
        QVERIFY2(status.contains(s("Dialogue")) && status.contains(s("Page 1 of 1")),
                 qPrintable(status));
        // A change in the middle changes that and no more.
        goTo(s("A **"));
        type(s("Behind. "));
        QTRY_COMPARE(markedText(), s("Behind. A loud [[why?]] door."));
        QTRY_VERIFY(placeText().contains(s("14 words")));
    }

    void pagesAreThoseOfAFreshWindow()
    {
        open(example);
        const QStringList changes = {s("\n\nMORE\nAnd more.\n\n"), s("/* "), s("*/"), s("\n"),
                                     s("#")};
        for (int i = 0; i < 12; ++i) {
            QTextCursor cursor = m_editor->textCursor();
            cursor.setPosition((i * 997) % m_editor->document()->characterCount());
            cursor.insertText(changes.at(i % changes.size()));
            if (i % 3 == 2) {
                cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, i);
                cursor.removeSelectedText();
            }
            QTest::qWait(350);
            Host::PagesView fresh;
            fresh.setScript(Host::read(m_editor->text()));
            // But for the numbers in the names of anchors, which are those of the day they came.
            const QRegularExpression anchor(s("<a name=\"[^\"]*\"></a>"));
            QCOMPARE(m_pages->toHtml().remove(anchor), fresh.toHtml().remove(anchor));
            // The same holds for the look of the lines.
            QTextDocument copy(m_editor->document()->toPlainText());
            Host::Highlighter highlighter(&copy);
            highlighter.setScript(Host::read(m_editor->text()));
            for (QTextBlock a = copy.begin(), b = m_editor->document()->begin(); a.isValid();
                 a = a.next(), b = b.next())
                QVERIFY2(a.layout()->formats() == b.layout()->formats(), qPrintable(a.text()));
        }
    }

    void scenesLeadToTheirHeadings()
    {
        open(example);
        QTRY_COMPARE(m_scenes->model()->rowCount(), 9);
        const QModelIndex fourth = m_scenes->model()->index(3, 0);
        QTest::mouseClick(m_scenes->viewport(), Qt::LeftButton, {},
                          m_scenes->visualRect(fourth).center());
        const QString heading = m_editor->textCursor().block().text().section(u'#', 0, 0).trimmed();
        QVERIFY(fourth.data().toString().endsWith(heading.toUpper()));
        QTRY_VERIFY(markedText().toUpper().startsWith(heading.toUpper()));
        QCOMPARE(m_scenes->currentIndex(), fourth);
    }

    void failedSaveLeavesTheFile_data()
    {
        QTest::addColumn<int>("room");
        QTest::newRow("not a byte") << 0;
        QTest::newRow("a part") << 4096;
        QTest::newRow("all but the last byte") << 99999;
    }
    void failedSaveLeavesTheFile()
    {
        QFETCH(int, room);
        write(path(), QByteArray(99999, 'a'));
        open(path());
        type(s("x"));
        QString message;
        {
            const SizeLimit limit(room);
            answerNext(QMessageBox::Ok, &message);
            key(Qt::Key_S, Qt::ControlModifier);
        }
        QVERIFY2(message.contains(s("s.fountain")), qPrintable(message));
        QCOMPARE(bytesOf(path()), QByteArray(99999, 'a'));
        QVERIFY(m_window->isWindowModified());
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(bytesOf(path()).size(), 100000);
        QVERIFY(!m_window->isWindowModified());
    }

    void killedWindowLeavesItsText()
    {
        if (qEnvironmentVariableIsSet(killedVariable)) {
            open(QString::fromLocal8Bit(qgetenv(killedVariable)));
            type(s("Unsaved. "));
            QTest::qWait(10000);
            std::raise(SIGKILL);
        }
        write(path(), "Old.\r\n");
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(killedVariable), path());
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(), {s("killedWindowLeavesItsText")});
        QVERIFY(child.waitForFinished(30000) && child.exitStatus() == QProcess::CrashExit);
        write(path(), "Old.\r\n"); // later than the copy
        QString question;
        answerNext(QMessageBox::Cancel, &question);
        showNew();
        QTRY_VERIFY(question.contains(s("s.fountain")) && question.contains(s("newer")));
        showNew();
        QTest::qWait(50);
        QVERIFY(!QApplication::activeModalWidget()); // It is asked once in a run of the program.
        QVERIFY(copies().rename(copies().entryList({s("*.copy")}).value(0), s("another.copy")));
        answerNext(QMessageBox::Open);
        showNew();
        QTRY_COMPARE(m_editor->text(), s("Unsaved. Old.\n"));
        QVERIFY(m_window->isWindowModified());
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(bytesOf(path()), QByteArray("Unsaved. Old.\r\n"));
        QCOMPARE(Host::Recovery::leftBehind(), QStringList());
        QCOMPARE(copies().entryList({s("*.copy")}).size(), 0);
    }

    void copiesOfTwoWindowsAreApart()
    {
        write(path(), "Old.");
        open(path());
        Host::Window other;
        QString error;
        QVERIFY(other.open(path(), &error));
        type(s("a"));
        QTest::keyClicks(other.findChild<Host::ScriptEditor *>(), s("b"));
        const auto count = [] { return int(copies().entryList({s("*.copy")}).size()); };
        QTRY_COMPARE_WITH_TIMEOUT(count(), 2, 10000);
        QCOMPARE(Host::Recovery::leftBehind(), QStringList()); // Both live.
        answerNext(QMessageBox::Discard);
        QVERIFY(other.close());
        QCOMPARE(count(), 1);
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(count(), 0);
    }

    void copyThatFailsIsKnown()
    {
        Host::Recovery recovery;
        {
            const SizeLimit limit(4);
            recovery.put(path(), s("text"));
            QTRY_VERIFY(recovery.hasFailed());
        }
        recovery.put(path(), s("text"));
        QTRY_VERIFY(!recovery.hasFailed());
        recovery.remove();
    }

    void changeOnTheDiskIsNoticed()
    {
        write(path(), "One.");
        open(path());
        write(path(), "Two.");
        QTRY_COMPARE(m_editor->text(), s("Two."));
        QVERIFY(!m_window->isWindowModified());
        type(s("x"));
        QString error;
        QVERIFY(Host::saveBytes(path(), "Three.", &error)); // by another file in its place
        answerNext(QMessageBox::Cancel);
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(bytesOf(path()), QByteArray("Three."));
        answerNext(QMessageBox::Save);
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(bytesOf(path()), QByteArray("xTwo."));
    }

    void namesGetTheirEndings()
    {
        open(m_folder->filePath(s("new"))); // is not there
        QVERIFY(m_window->windowTitle().startsWith(s("new.fountain")));
        type(s("INT. A"));
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(bytesOf(m_folder->filePath(s("new.fountain"))), QByteArray("INT. A"));
        nameNext(m_folder->filePath(s("other")));
        key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(bytesOf(m_folder->filePath(s("other.fountain"))), QByteArray("INT. A"));
        for (const char *ending : {"html", "odt", "pdf", "txt"}) {
            const QString name = m_folder->filePath(s("out.") + s(ending));
            nameNext(name);
            key(Qt::Key_E, Qt::ControlModifier);
            QVERIFY2(QFileInfo(name).size() > 5, ending);
        }
        nameNext(m_folder->filePath(s("noending")));
        key(Qt::Key_E, Qt::ControlModifier);
        QVERIFY(QFileInfo::exists(m_folder->filePath(s("noending.html"))));
        write(path(), "abc\xff");
        QString error;
        QVERIFY(!m_window->open(path(), &error) && error.contains(s("3")));
        QCOMPARE(m_editor->text(), s("INT. A"));
    }

    void capitalsAreCompleted_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("line");
        QTest::newRow("Return takes the most used") << s("\nM\n") << s("MARY");
        QTest::newRow("down to the next") << s("\nM↓\n") << s("MAX");
        QTest::newRow("Escape declines") << s("\nM⎋O\n") << s("MO\n");
        QTest::newRow("typing goes on") << s("\nMOE\n") << s("MOE\n");
        QTest::newRow("a whole name is complete") << s("\nMAX\n") << s("MAX\n");
        QTest::newRow("place") << s("\nINT\n") << s("INT. MILL");
        QTest::newRow("not below a line") << s("M\n") << s("M\n");
        QTest::newRow("not in small letters") << s("\nMa\n") << s("Ma\n");
    }
    void capitalsAreCompleted()
    {
        QFETCH(QString, typed);
        QFETCH(QString, line);
        const QString script = s("INT. MILL - DAY\n\nMAX\nA.\n\nMARY (O.S.)\nB.\n\nMARY\nC.\n");
        write(path(), script.toUtf8());
        open(path());
        QTRY_COMPARE(m_scenes->model()->rowCount(), 1);
        m_editor->moveCursor(QTextCursor::End);
        for (const QChar c : qAsConst(typed)) {
            const Qt::Key key = c == u'\n'  ? Qt::Key_Return
                                : c == u'↓' ? Qt::Key_Down
                                : c == u'⎋' ? Qt::Key_Escape
                                            : Qt::Key_unknown;
            QWidget *popup = QApplication::activePopupWidget();
            QWidget *target = popup ? popup : m_editor;
            key == Qt::Key_unknown ? QTest::keyClicks(target, c) : QTest::keyClick(target, key);
        }
        QCOMPARE(m_editor->text().mid(script.size() + (typed.startsWith(u'\n') ? 1 : 0)), line);
    }

    void marksGoAroundTheSelection_data()
    {
        QTest::addColumn<QString>("text"); // the selection between bars
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("changed");
        QTest::newRow("bold") << s("a |b| c") << s("B") << s("a **|b|** c");
        QTest::newRow("off again") << s("a |b| c") << s("BB") << s("a |b| c");
        QTest::newRow("italics in bold") << s("**|b|**") << s("I") << s("***|b|***");
        QTest::newRow("bold off both") << s("***|b|***") << s("B") << s("*|b|*");
        QTest::newRow("marks selected too") << s("|_b_|") << s("U") << s("|b|");
        QTest::newRow("each line") << s("a|b\n\nc|d") << s("I") << s("a*|b*\n\n*c|*d");
        QTest::newRow("note") << s("a |b\nc| d") << s("N") << s("a [[|b\nc|]] d");
        QTest::newRow("comment off") << s("|b|") << s("//") << s("|b|");
        QTest::newRow("nothing selected") << s("a ||") << s("BI") << s("a ***||***");
    }
    void marksGoAroundTheSelection()
    {
        QFETCH(QString, text);
        QFETCH(QString, keys);
        QFETCH(QString, changed);
        const int from = int(text.indexOf(u'|')), to = int(text.lastIndexOf(u'|')) - 1;
        m_editor->setPlainText(text.remove(u'|'));
        QTextCursor cursor = m_editor->textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        m_editor->setTextCursor(cursor);
        for (const QChar c : qAsConst(keys))
            key(Qt::Key(c.unicode()), c == u'N' ? Qt::ControlModifier | Qt::ShiftModifier
                                                : Qt::KeyboardModifiers(Qt::ControlModifier));
        QString shown = m_editor->text();
        cursor = m_editor->textCursor();
        shown.insert(cursor.selectionEnd(), u'|').insert(cursor.selectionStart(), u'|');
        QCOMPARE(shown, changed);
        for (int i = 0; i < keys.size(); ++i)
            m_editor->undo();
        QCOMPARE(m_editor->text(), text);
    }

    void findBarFindsAndReplaces()
    {
        m_editor->setPlainText(s("sea Sea sea"));
        key(Qt::Key_F, Qt::ControlModifier);
        auto *sought = m_window->findChildren<QLineEdit *>().at(0);
        auto *replacement = m_window->findChildren<QLineEdit *>().at(1);
        QTest::keyClicks(sought, s("Sea"));
        const auto start = [this] { return m_editor->textCursor().selectionStart(); };
        QTest::keyClick(sought, Qt::Key_Return);
        QTest::keyClick(sought, Qt::Key_Return);
        QCOMPARE(start(), 4);
        key(Qt::Key_F3);
        key(Qt::Key_F3); // from the start again
        QCOMPARE(start(), 0);
        key(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(start(), 8);
        QTest::keyClicks(replacement, s("Seas"));
        QTest::keyClick(replacement, Qt::Key_Return);
        QCOMPARE(m_editor->text(), s("sea Sea Seas"));
        m_window->findChild<QCheckBox *>()->click();
        button(s("&All"))->click();
        QCOMPARE(m_editor->text(), s("sea Seas Seass"));
        m_editor->undo(); // all at once
        QCOMPARE(m_editor->text(), s("sea Sea Seas"));
        QTest::keyClick(sought, Qt::Key_Escape);
        QVERIFY(!sought->isVisible());
    }

    void richTextComesInAsFountain()
    {
        QTextDocument document;
        Host::importScript(s("INT. HALL - DAY\n\nANNA\nWho *is* it?\n"), &document);
        const QString html = m_folder->filePath(s("a.html"));
        write(html, document.toHtml().toUtf8());
        open(html);
        QVERIFY2(m_editor->text().contains(s("ANNA\nWho *is* it?")), qPrintable(m_editor->text()));
        QVERIFY(m_window->isWindowModified() && m_window->windowTitle().startsWith(s("Untitled")));
        QTRY_VERIFY(m_pages->toPlainText().contains(s("Who is it?")));
        m_pages->selectAll();
        m_pages->setFocus();
        QTest::keyClick(m_pages, Qt::Key_C, Qt::ControlModifier);
        m_editor->clear();
        key(Qt::Key_V, Qt::ControlModifier);
        QVERIFY2(m_editor->text().contains(s("ANNA\nWho *is* it?")), qPrintable(m_editor->text()));
        // What a script cannot say is told.
        document.clear();
        QTextCursor cursor(&document);
        cursor.setBlockFormat(ZEMScriptElement::find(Host::records(), s("Character")).blockFormat);
        cursor.insertText(s("bob"));
        auto *small = new QMimeData;
        small->setHtml(document.toHtml());
        QApplication::clipboard()->setMimeData(small);
        QString message;
        answerNext(QMessageBox::Ok, &message);
        key(Qt::Key_V, Qt::ControlModifier);
        QTRY_VERIFY2(message.contains(s("bob")), qPrintable(message));
        auto *other = new QMimeData;
        other->setHtml(s("<p>A <b>b</b></p>"));
        other->setText(s("A b"));
        QApplication::clipboard()->setMimeData(other);
        m_editor->clear();
        key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(m_editor->text(), s("A b"));
    }

    void changesAreNotLost()
    {
        open(example);
        type(s("x"));
        answerNext(QMessageBox::Cancel);
        QVERIFY(!m_window->close());
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(example)});
        files.setText(example);
        QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(m_editor->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(500, 400), Qt::CopyAction, &files, Qt::LeftButton, {});
        answerNext(QMessageBox::Discard);
        QApplication::sendEvent(m_window.data(), &drop);
        QTRY_VERIFY(!m_window->isWindowModified());
        QCOMPARE(m_editor->text().toUtf8(), bytesOf(example));
        m_editor->undo(); // There is nothing to undo: the script is not emptied.
        QCOMPARE(m_editor->text().toUtf8(), bytesOf(example));
    }

    void commandsHaveKeysAndSettingsLast()
    {
        QStringList keys;
        for (const QAction *action : m_window->menuBar()->findChildren<QAction *>()) {
            if (action->menu() || action->isSeparator())
                continue;
            QVERIFY2(!action->shortcut().isEmpty(), qPrintable(action->text()));
            QVERIFY2(!keys.contains(action->shortcut().toString()), qPrintable(action->text()));
            keys.append(action->shortcut().toString());
        }
        QVERIFY(keys.size() >= 20);
        const int points = m_editor->font().pointSize();
        key(Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(!m_window->isWindowModified());
        key(Qt::Key_F8);
        QVERIFY(!m_pages->isVisible());
        open(example);
        m_window->resize(1011, 555);
        auto *split = m_window->findChild<QSplitter *>();
        key(Qt::Key_F8);
        split->setSizes({300, 600});
        const QByteArray state = split->saveState();
        key(Qt::Key_F8);
        QVERIFY(m_window->close());
        showNew();
        QVERIFY(!m_pages->isVisible());
        key(Qt::Key_F8);
        QCOMPARE(m_window->findChild<QSplitter *>()->saveState(), state);
        QCOMPARE(m_editor->font().pointSize(), points + 1);
        QCOMPARE(m_window->size(), QSize(1011, 555));
        auto *recent = m_window->menuBar()->findChildren<QMenu *>().at(1);
        Q_EMIT recent->aboutToShow();
        recent->actions().value(0)->trigger();
        QCOMPARE(m_editor->text().toUtf8(), bytesOf(example));
    }

    // With TST_WINDOW_LETTERS=200 it is the measurement of a long spell of typing.
    void typingDoesNotStall()
    {
        const QByteArray one = bytesOf(example);
        write(path(), one.repeated(26)); // more than 130 pages
        open(path());
        QTRY_VERIFY(m_scenes->model()->rowCount() > 200);
        goTo(s("Glass all round"), 13);
        QTest::qWait(500);
        QElapsedTimer clock;
        qint64 gap = 0;
        QTimer ticks;
        connect(&ticks, &QTimer::timeout, this, [&] { gap = std::max(gap, clock.restart()); });
        ticks.start(1);
        clock.start();
        bool given = false;
        const int wanted = qEnvironmentVariableIntValue("TST_WINDOW_LETTERS", &given);
        const int letters = given ? wanted : 30;
        for (int i = 0; i < letters; ++i) {
            QTest::keyClick(m_editor, i % 7 == 6 ? Qt::Key_Space : Qt::Key_A);
            QTest::qWait(i % 20 == 19 ? 600 : 67); // At a pause the script is read.
        }
        qInfo("%s, longest gap %lld ms", qPrintable(placeText()), gap);
        QVERIFY(gap < 500); // It is a tenth of that on an idle machine.
    }

private:
    QString path() const { return m_folder->filePath(s("s.fountain")); }

    static QDir copies()
    {
        return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                    + s("/unsaved"));
    }

    void showNew()
    {
        m_window.reset();
        m_window.reset(new Host::Window);
        m_editor = m_window->findChild<Host::ScriptEditor *>();
        m_pages = m_window->findChild<Host::PagesView *>();
        m_scenes = m_window->findChild<QListView *>();
        m_window->show();
    }

    void open(const QString &name)
    {
        QString error;
        QVERIFY2(m_window->open(name, &error), qPrintable(error));
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QApplication::setActiveWindow(m_window.data()); // Shortcuts are for the active one.
        QTest::keyClick(m_editor, key, modifiers);
    }

    void type(const QString &text, Qt::Key last = Qt::Key_unknown)
    {
        for (const QChar c : text)
            c == u'\n' ? key(Qt::Key_Return) : QTest::keyClicks(m_editor, c);
        if (last != Qt::Key_unknown)
            key(last);
    }

    void goTo(const QString &text, int times = 1)
    {
        m_editor->moveCursor(QTextCursor::Start);
        for (int i = 0; i < times; ++i)
            QVERIFY(m_editor->find(text));
        QTextCursor cursor = m_editor->textCursor();
        cursor.setPosition(cursor.selectionStart());
        m_editor->setTextCursor(cursor);
    }

    /// How the letter behind the start of \a text looks in the editor.
    QTextCharFormat formatAt(const QString &text) const
    {
        const QTextCursor found = m_editor->document()->find(text);
        const int at = found.selectionStart() - found.block().position();
        for (const auto &range : found.block().layout()->formats()) {
            if (range.start <= at && at < range.start + range.length)
                return range.format;
        }
        return QTextCharFormat();
    }

    QString markedText() const
    {
        const auto marks = m_pages->extraSelections();
        return marks.isEmpty() ? QString() : marks.first().cursor.block().text();
    }

    QString placeText() const { return m_window->statusBar()->findChild<QLabel *>()->text(); }

    QPushButton *button(const QString &text) const
    {
        for (auto *one : m_window->findChildren<QPushButton *>()) {
            if (one->text() == text)
                return one;
        }
        return nullptr;
    }

    QTemporaryDir m_data;
    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Host::Window> m_window;
    Host::ScriptEditor *m_editor = nullptr;
    Host::PagesView *m_pages = nullptr;
    QListView *m_scenes = nullptr;
};

QTEST_MAIN(WindowTest)
#include "tst_window.moc"
