// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "files.h"
#include "host/files.h"
#include "host/highlighter.h"
#include "host/pagesview.h"
#include "host/records.h"
#include "host/recovery.h"
#include "host/richtext.h"
#include "host/scripteditor.h"
#include "host/window.h"
#include "rows.h"

#include <QtWidgets/QtWidgets>

namespace {

const QString example = QStringLiteral(EXAMPLES "/the-lamp-keeper.fountain");
constexpr char killedVariable[] = "TST_WINDOW_KILLED";

/// Lets \a act have the dialogue that comes up next.
template<typename Dialog, typename Act>
void withNext(Act act)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [=] {
        if (auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            act(dialog);
        }
    });
    timer->start(5);
}

/// Presses a button of the question that comes up next, and \a then one of the question behind it.
/// The text of the last one is kept in \a text.
void answerNext(QMessageBox::StandardButton button, QString *text = nullptr,
                QMessageBox::StandardButton then = QMessageBox::NoButton)
{
    withNext<QMessageBox>([=](QMessageBox *question) {
        if (text)
            *text = question->text();
        if (then != QMessageBox::NoButton)
            answerNext(then, text);
        question->button(button)->click();
    });
}

/// Types \a name into the dialogue for a file that comes up next.
void nameNext(const QString &name, const QString &filter = QString())
{
    withNext<QFileDialog>([=](QFileDialog *dialog) {
        QTest::qWait(200); // The dialogue has listed its folder by then.
        QTest::keyClicks(dialog->findChild<QComboBox *>(u"fileTypeCombo"_s), filter);
        auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
        edit->selectAll();
        QTest::keyClicks(edit, name);
        QTest::keyClick(edit, Qt::Key_Return);
    });
}

/// A letter for each thing that sets a text off: colour, bold, italics, underline.
QString lookOf(const QTextCharFormat &format)
{
    const bool hasColour = format.hasProperty(QTextFormat::ForegroundBrush);
    return u"{"_s + u"c"_s.left(hasColour) + u"b"_s.left(format.fontWeight() >= QFont::Bold)
           + u"i"_s.left(format.fontItalic()) + u"u"_s.left(format.fontUnderline()) + u"}"_s;
}

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

    void bytesAreKept_data() { addCases({u"window-files"_s}); }
    void bytesAreKept()
    {
        QFETCH(QString, input);
        create(path(), input.toUtf8());
        open(path());
        type(u"x"_s, Qt::Key_Backspace);
        for (const Qt::Key one : {Qt::Key_A, Qt::Key_X, Qt::Key_V})
            key(one, Qt::ControlModifier);
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(contents(path()), input.toUtf8());
        QVERIFY(!m_window->isWindowModified());
    }

    void typedTextIsReadAndFollowed()
    {
        type(u"[[Once more.]]\n\nINT. HALL - DAY #12A#"_s, Qt::Key_Return);
        type(u"\nA **loud** [[why?]] door.\n\nANNA\nWho is it?\n"_s);
        QTRY_VERIFY(m_pages->toPlainText().contains(u"Who is it?"_s));
        QVERIFY(formatAt(u"[[why"_s).foreground().color().lightness() < 128);
        m_window->setPalette(QPalette(Qt::black));
        QVERIFY(formatAt(u"[[why"_s).foreground().color().lightness() > 128);
        QCOMPARE(m_pages->palette().color(QPalette::Text), QColor(Qt::black)); // paper stays paper
        const QRect pages(m_pages->mapTo(m_window.data(), QPoint()), m_pages->size());
        const QImage shown = m_window->grab(pages).toImage();
        QCOMPARE(shown.pixelColor(0, 0), QColor(0xc8, 0xc8, 0xc8));
        QCOMPARE(shown.pixelColor(shown.width() / 2, 0), QColor(Qt::white));
        QCOMPARE(m_scenes->model()->index(0, 0).data().toString(), u"12A  INT. HALL - DAY"_s);
        goTo(u"[[Once"_s);
        QCOMPARE(placeText(), u"Note  ·  Page 1 of 1  ·  15 words"_s);
        goTo(u"Who is"_s);
        QCOMPARE(markedText(), u"Who is it?"_s);
        m_pages->showParagraph(99); // which is none
        QCOMPARE(markedText(), u"Who is it?"_s);
        QCOMPARE(placeText(), u"Dialogue  ·  Page 1 of 1  ·  15 words"_s);
        // A change in the middle changes that and no more.
        goTo(u"A **"_s);
        type(u"Behind. "_s);
        QTRY_COMPARE(markedText(), u"Behind. A loud [[why?]] door."_s);
        QTRY_VERIFY(placeText().endsWith(u"16 words"_s));
        m_editor->moveCursor(QTextCursor::End);
        key(Qt::Key_Return, Qt::ShiftModifier);
        QVERIFY(m_editor->text().endsWith(u"it?\n\n"_s));
        m_editor->clear();
        QTRY_COMPARE(placeText(), QString());
    }

    void whatChangesLooksAsIfItWereNew()
    {
        QTextDocument text(QString::fromUtf8(contents(example)));
        QTextCursor cursor(&text);
        Host::Highlighter highlighter(&text);
        Host::PagesView pages;
        for (const QString &script :
             {u"a\n"_s, u"a\n\nb\n"_s, u"a\n"_s, u"c\n\na\n"_s, u"a\n"_s, u""_s}) {
            pages.setScript(Host::read(script));
            QCOMPARE(pages.toPlainText(), script.trimmed().replace(u"\n\n"_s, u"\n"_s));
        }
        pages.showParagraph(0); // A blank line is marked too.
        const QImage shown = pages.viewport()->grab().toImage();
        QCOMPARE(shown.pixelColor(99, pages.cursorRect().center().y()), QColor(0xff, 0xf3, 0xc4));
        const QStringList added = {
            u"More.\n\n"_s, u"\n\nMORE\nAnd more.\n"_s, u"/* "_s, u"\n"_s, u"#"_s, u""_s};
        for (int i = 0; i < 60; ++i) {
            cursor.beginEditBlock();
            cursor.setPosition((i / 2 * 997) % text.characterCount());
            if (i % 2 == 0)
                cursor.movePosition(QTextCursor::StartOfBlock);
            cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor, i % 4);
            cursor.insertText(added.at(i % added.size()));
            cursor.endEditBlock();
            for (const bool isUndone : {false, true}) {
                if (isUndone)
                    text.undo();
                const auto script = Host::read(text.toPlainText());
                pages.setScript(script);
                highlighter.setScript(script);
                Host::PagesView newPages;
                newPages.setScript(script);
                // But for the numbers in the names of anchors, which nobody sees.
                const QRegularExpression anchor(u"<a name=\"[^\"]*\"></a>"_s);
                QCOMPARE(pages.toHtml().remove(anchor), newPages.toHtml().remove(anchor));
                QTextDocument newText(text.toPlainText());
                Host::Highlighter newHighlighter(&newText);
                newHighlighter.setScript(script);
                for (QTextBlock a = newText.begin(), b = text.begin(); a.isValid();
                     a = a.next(), b = b.next())
                    QVERIFY2(a.layout()->formats() == b.layout()->formats(), qPrintable(a.text()));
            }
        }
    }

    void nothingButChangesIsLaidOut()
    {
        Host::PagesView pages;
        pages.setScript(Host::read(u"INT. A #1#\n\nb *c*\n\nd\n\n## E"_s));
        int from = 0, taken = 0;
        connect(pages.document(), &QTextDocument::contentsChange, &pages, [&](int at, int removed) {
            from = at;
            taken = removed;
        });
        pages.setScript(Host::read(u"INT. A #1#\n\nb *c*\n\nD\n\n## E"_s));
        QCOMPARE(from, pages.document()->findBlockByNumber(2).position());
        QCOMPARE(taken, 2);
    }

    void kindsAreSetOff_data() { addCases({u"window-looks"_s}); }
    void kindsAreSetOff()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        QTextDocument text(input);
        text.documentLayout(); // Without one, changes are told to nobody.
        Host::Highlighter highlighter(&text);
        QCoreApplication::processEvents();
        highlighter.setScript(Host::read(input));
        for (const bool dark : {false, true}) {
            highlighter.setDark(dark);
            QString looks;
            for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
                for (const auto &range : block.layout()->formats())
                    looks += block.text().mid(range.start, range.length) + lookOf(range.format);
            }
            QCOMPARE(looks, expected);
        }
    }

    void looksFollowTheirLettersMeanwhile_data() { addCases({u"window-changes"_s}); }
    void looksFollowTheirLettersMeanwhile()
    {
        QFETCH(QString, input);
        selectBetweenBars(input.section(u';', 0, 0));
        QTRY_VERIFY(lookOf(formatAt(u"loud"_s)) == u"{b}"_s);
        m_editor->textCursor().insertText(input.section(u';', 1));
        QString bold;
        for (const auto &range : m_editor->document()->firstBlock().layout()->formats())
            bold += m_editor->text().mid(range.start,
                                         lookOf(range.format) == u"{b}"_s ? range.length : 0);
        QTEST(bold, "expected");
    }

    void columnsHaveTheirLetters()
    {
        Host::PagesView pages;
        pages.show();
        const QString action = u"123456789 "_s.repeated(6), speech = u"ANNA\n"_s + action.left(35);
        pages.setScript(Host::read(action.left(59) + u"0\n\n"_s + action + u"1\n\n"_s + speech
                                   + u"\n\n"_s + speech + u"6\n"_s));
        QCoreApplication::processEvents();
        QList<int> lines;
        for (QTextBlock block = pages.document()->begin(); block.isValid(); block = block.next())
            lines.append(block.layout()->lineCount());
        QCOMPARE(lines, (QList<int>{1, 2, 1, 1, 1, 2}));
        QVERIFY(!pages.document()->isUndoRedoEnabled());
        QWheelEvent wheel({}, {}, {}, {0, 120}, {}, Qt::ControlModifier, {}, false);
        QApplication::sendEvent(pages.viewport(), &wheel);
        QCOMPARE(pages.document()->lastBlock().layout()->lineCount(), 2);
        // The paper is in the middle, if there is room on both sides.
        pages.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        for (const int room : {200, 0}) {
            pages.resize(672 + room + pages.verticalScrollBar()->sizeHint().width(), 300);
            QCOMPARE(pages.viewport()->geometry(), QRect(room / 2, 0, 672, 300));
        }
    }

    void scenesLeadToTheirHeadings()
    {
        open(example);
        QTRY_COMPARE(m_scenes->model()->rowCount(), 9);
        const QModelIndex fourth = m_scenes->model()->index(3, 0);
        const QPoint place = m_scenes->visualRect(fourth).center();
        QTest::mouseClick(m_scenes->viewport(), Qt::LeftButton, {}, place);
        const QString heading = m_editor->textCursor().block().text().section(u'#', 0, 0).trimmed();
        QVERIFY(fourth.data().toString().endsWith(heading.toUpper()));
        QTRY_VERIFY(markedText().toUpper().startsWith(heading.toUpper()));
        QCOMPARE(m_scenes->currentIndex(), fourth);
        const QRect mark = m_pages->cursorRect(m_pages->extraSelections().first().cursor);
        QVERIFY(std::abs(mark.top() - m_pages->viewport()->height() / 3) < 2); // not at an edge
        QVERIFY(m_editor->cursorRect().top() < 2 * m_editor->fontMetrics().height());
        QCOMPARE(m_window->focusWidget(), m_editor);
        m_scenes->setCurrentIndex(m_scenes->model()->index(0, 0));
        QTest::keyClick(m_scenes, Qt::Key_Return);
        QVERIFY(m_editor->textCursor().blockNumber() < 20);
        QTest::mouseDClick(m_scenes->viewport(), Qt::LeftButton, {}, place);
        QVERIFY(!m_scenes->findChild<QLineEdit *>()); // A heading is changed in the text.
    }

    void failedSaveLeavesTheFile()
    {
        const QByteArray older = QByteArray("Nine more\n").repeated(10000).chopped(1);
        create(path(), older);
        open(path());
        for (const int room : {0, 4096, 99998}) { // not a byte, a part, all but the last byte
            const SizeLimit limit(room);
            QString message;
            answerNext(QMessageBox::Ok, &message);
            key(Qt::Key_S, Qt::ControlModifier);
            QVERIFY2(message.contains(u"s.fountain"_s), qPrintable(message));
            QVERIFY(contents(path()) == older && m_window->isWindowModified());
        }
        type(u"x"_s);
        key(Qt::Key_S, Qt::ControlModifier);
        QVERIFY(contents(path()) == "x" + older && !m_window->isWindowModified());
    }

    void killedWindowLeavesItsText()
    {
        if (qEnvironmentVariableIsSet(killedVariable)) {
            open(QString::fromLocal8Bit(qgetenv(killedVariable)));
            type(u"Unsaved. "_s);
            QTest::qWait(60000);
        }
        const QByteArray older = "Old.\r\n" + QByteArray(500, 'x'); // more than a lock has
        const QString text = u"Unsaved. Old.\n"_s + QString(500, u'x');
        create(path(), older);
        QProcess child;
        qputenv(killedVariable, path().toLocal8Bit());
        child.start(QCoreApplication::applicationFilePath(), {u"killedWindowLeavesItsText"_s});
        qunsetenv(killedVariable);
        QTRY_COMPARE_WITH_TIMEOUT(copyCount(), 1, 10000);
        child.kill();
        QVERIFY(child.waitForFinished());
        create(path(), older); // later than the copy
        QString question;
        answerNext(QMessageBox::Cancel, &question);
        showNew();
        QTRY_VERIFY(
            question.startsWith(u"s.fountain was not"_s)
            && question.contains(u"? The file on the disk is newer."_s)
            && question.contains(QLocale().toString(QDate::currentDate(), QLocale::ShortFormat)));
        showNew();
        QTest::qWait(50);
        QVERIFY(!QApplication::activeModalWidget()); // It is asked once in a run of the program.
        QString copy = copies().filePath(copies().entryList({u"*.copy"_s}).value(0));
        QVERIFY(QFile::rename(copy, copy + u"1.copy"_s)); // which was not asked for yet
        copy += u"1.copy"_s;
        {
            const SizeLimit limit(600); // A copy that no other one can follow stays.
            answerNext(QMessageBox::Open);
            showNew();
            QTRY_COMPARE(m_editor->text(), text);
        }
        QCOMPARE(copyCount(), 1);
        // Two copies, of which one finds the window taken.
        QVERIFY(QFile::copy(copy, copy + u".copy"_s) && QFile::rename(copy, copy + u"2.copy"_s));
        answerNext(QMessageBox::Open, nullptr, QMessageBox::Open);
        showNew();
        QTRY_VERIFY(otherWindow());
        answerNext(QMessageBox::Discard);
        QVERIFY(otherWindow()->close());
        QTRY_COMPARE(m_editor->text(), text);
        QVERIFY(m_window->isWindowModified());
        QTRY_COMPARE_WITH_TIMEOUT(copyCount(), 1, 1000); // before the next that typing brings
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(contents(path()), "Unsaved. " + older);
        QCOMPARE(copyCount(), 0);
    }

    void copiesOfTwoWindowsAreApart()
    {
        create(path(), "Old.");
        open(path());
        Host::Window other;
        QString error;
        QVERIFY(other.open(path(), &error));
        type(u"a"_s);
        QTest::keyClicks(other.findChild<Host::ScriptEditor *>(), u"b"_s);
        QTRY_COMPARE_WITH_TIMEOUT(copyCount(), 2, 10000);
        QCOMPARE(Host::Recovery::leftBehind(), QStringList()); // Both live.
        QTest::keyClicks(other.findChild<Host::ScriptEditor *>(), u"b"_s);
        answerNext(QMessageBox::Discard);
        QVERIFY(other.close());
        QCOMPARE(copyCount(), 1);
        key(Qt::Key_S, Qt::ControlModifier);
        QTest::qWait(2500); // What was discarded or saved is not put aside again.
        QCOMPARE(copyCount(), 0);
    }

    void changeOnTheDiskIsNoticed()
    {
        create(path(), "One.");
        open(path());
        m_editor->moveCursor(QTextCursor::End);
        QString error;
        for (const QString &text : {u"Changed once."_s, u"Twice."_s, u"Two"_s}) {
            QVERIFY(Host::saveBytes(path(), text.toUtf8(), &error)); // by another file in its place
            QTRY_COMPARE(m_editor->text(), text);
        }
        QVERIFY(m_window->statusBar()->currentMessage().contains(u"another program"_s));
        create(path(), ""); // by a program that takes its time
        QTest::qWait(50);
        create(path(), "Twofold");
        QTRY_COMPARE(m_editor->text(), u"Twofold"_s);
        QVERIFY(!m_window->isWindowModified() && m_editor->textCursor().position() == 3);
        key(Qt::Key_S, Qt::ControlModifier);
        QTest::qWait(100); // What was saved is noticed, and its successor watched.
        QVERIFY(Host::saveBytes(path(), "2wo.", &error));
        QTRY_COMPARE(m_editor->text(), u"2wo."_s);
        m_editor->moveCursor(QTextCursor::Start);
        type(u"x"_s);
        create(path(), "Three.");
        QString question;
        answerNext(QMessageBox::Save, &question, QMessageBox::Cancel);
        QVERIFY(!m_window->close());
        QVERIFY(question.startsWith(u"s.fountain was"_s));
        QCOMPARE(contents(path()), QByteArray("Three."));
        answerNext(QMessageBox::Save);
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(contents(path()), QByteArray("x2wo."));
        QVERIFY(QFile::remove(path()));
        QTRY_VERIFY(m_window->isWindowModified());
        QCOMPARE(m_editor->text(), u"x2wo."_s);
    }

    void namesGetTheirEndings()
    {
        open(m_folder->filePath(u"new"_s)); // is not there
        QCOMPARE(m_window->windowTitle(), u"new.fountain[*] - zemscript"_s);
        type(u"INT. A"_s);
        key(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(contents(m_folder->filePath(u"new.fountain"_s)), QByteArray("INT. A"));
        open(m_folder->filePath(u"new"_s));
        QCOMPARE(m_editor->text(), u"INT. A"_s);
        nameNext(m_folder->filePath(u"other"_s));
        key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(contents(m_folder->filePath(u"other.fountain"_s)), QByteArray("INT. A"));
        QVERIFY(m_window->windowTitle().startsWith(u"other.fountain"_s));
        for (const QString &name :
             {u"out.html"_s, u"out.odt"_s, u"out.pdf"_s, u"out.txt"_s, u"noending"_s}) {
            nameNext(m_folder->filePath(name));
            key(Qt::Key_E, Qt::ControlModifier);
            const QString file = name.contains(u'.') ? name : name + u".html"_s;
            QVERIFY2(QFileInfo(m_folder->filePath(file)).size() > 5, qPrintable(file));
        }
        nameNext(m_folder->filePath(u"chosen"_s), u"*.o"_s);
        key(Qt::Key_E, Qt::ControlModifier);
        QVERIFY(QFile::exists(m_folder->filePath(u"chosen.odt"_s)));
        for (const QString &command : {u"&Open..."_s, u"Save &As..."_s, u"&Export..."_s}) {
            withNext<QFileDialog>([](QFileDialog *dialog) { dialog->reject(); });
            action(command)->trigger();
        }
        QCOMPARE(m_editor->text(), u"INT. A"_s);
        open(m_folder->filePath(u"later.txt"_s)); // is not there either
        QVERIFY(m_window->windowTitle().startsWith(u"later.txt"_s));
        nameNext(m_folder->filePath(u"empty.txt"_s));
        key(Qt::Key_E, Qt::ControlModifier);
        QVERIFY(QFile::exists(m_folder->filePath(u"empty.txt"_s)));
        QString message;
        nameNext(m_folder->filePath(u"later.txt"_s));
        answerNext(QMessageBox::Ok, &message);
        key(Qt::Key_E, Qt::ControlModifier);
        QVERIFY2(message.endsWith(u"later.txt: is the script itself"_s), qPrintable(message));
        create(path(), "abc\xff");
        QString error;
        QVERIFY(!m_window->open(path(), &error) && error.contains(u"3"_s));
        const QString page = m_folder->filePath(u"page.html"_s);
        create(page, "<p>no script</p>");
        QVERIFY(!m_window->open(page, &error) && error.contains(u"no paragraphs"_s));
        QVERIFY(!m_window->save(page, &error) && error.contains(u"by Export"_s));
        QVERIFY(!m_window->open(page + u".html"_s, &error) && error.contains(u"no such file"_s));
        QCOMPARE(m_editor->text(), QString());
    }

    void capitalsAreCompleted_data() { addCases({u"window-completion"_s}); }
    void capitalsAreCompleted()
    {
        QFETCH(QString, input);
        const QString script =
            u"INT. HALL\n\nINT. MILL\n\nINT. MILL - DAY\n\nEXT. QUAY\n\nMAX\nA.\n\nMARY (O.S.)\nB.\n\nMARY\nC.\n"_s;
        create(path(), script.toUtf8());
        open(path());
        QTRY_COMPARE(m_scenes->model()->rowCount(), 4);
        m_editor->moveCursor(QTextCursor::End);
        const QHash<QChar, Qt::Key> keys = {{u'\n', Qt::Key_Return}, {u'↓', Qt::Key_Down},
                                            {u'←', Qt::Key_Left},    {u'→', Qt::Key_Right},
                                            {u'⎋', Qt::Key_Escape},  {u'⌫', Qt::Key_Backspace},
                                            {u'⌤', Qt::Key_Enter}};
        for (const QChar c : qAsConst(input)) {
            QWidget *popup = QApplication::activePopupWidget();
            QWidget *target = popup ? popup : m_editor;
            QVERIFY(target->width() > 100); // An offer can be read.
            keys.contains(c) ? QTest::keyClick(target, keys[c]) : QTest::keyClicks(target, c);
        }
        QTEST(m_editor->text().mid(script.size() + (input.startsWith(u'\n') ? 1 : 0)), "expected");
    }

    void marksGoAroundTheSelection_data() { addCases({u"window-marks"_s}); }
    void marksGoAroundTheSelection()
    {
        QFETCH(QString, input);
        const QString keys = input.section(u':', 0, 0);
        selectBetweenBars(input.section(u':', 1));
        const QString text = m_editor->text();
        for (const QChar c : keys)
            key(Qt::Key(c.unicode()), c == u'N' ? Qt::ControlModifier | Qt::ShiftModifier
                                                : Qt::KeyboardModifiers(Qt::ControlModifier));
        QTEST(textWithBars(), "expected");
        for (int i = 0; i < keys.size(); ++i)
            m_editor->undo();
        QCOMPARE(m_editor->text(), text);
    }

    void findBarFindsAndReplaces_data() { addCases({u"window-find"_s}); }
    void findBarFindsAndReplaces()
    {
        QFETCH(QString, input);
        const auto *bar = m_window->findChild<QToolBar *>();
        QVERIFY(!bar->isVisible() && !bar->isMovable());
        selectBetweenBars(input.section(u':', 0, 0));
        key(Qt::Key_H, Qt::ControlModifier);
        for (const QString &step : input.section(u':', 1).split(u',')) {
            QWidget *target = QApplication::focusWidget();
            for (QAction *button : bar->actions())
                target = button->text() == step ? bar->widgetForAction(button) : target;
            if (target != QApplication::focusWidget())
                QTest::mouseClick(target, Qt::LeftButton);
            else if (QKeySequence(step).toString() == step)
                QTest::keySequence(target, QKeySequence(step));
            else
                QTest::keyClicks(target, step);
        }
        QTEST(textWithBars() + u';' + bar->findChild<QLabel *>()->text()
                  + u";closed"_s.repeated(!bar->isVisible()),
              "expected");
    }

    void richTextComesInAsFountain()
    {
        QTextDocument document;
        Host::importScript(u"INT. HALL - DAY\n\nANNA\nWho *is* it?\n"_s, &document);
        create(m_folder->filePath(u"a.HTML"_s), document.toHtml().toUtf8());
        open(m_folder->filePath(u"a.HTML"_s));
        QCOMPARE(m_editor->text(), u"INT. HALL - DAY\n\nANNA\nWho *is* it?\n"_s);
        QVERIFY(m_window->isWindowModified() && m_window->windowTitle().startsWith(u"Untitled"_s));
        QTRY_VERIFY(m_pages->toPlainText().contains(u"Who is it?"_s));
        m_pages->selectAll();
        m_pages->setFocus();
        QTest::keyClick(m_pages, Qt::Key_C, Qt::ControlModifier);
        m_editor->clear();
        key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(m_editor->text(), u"INT. HALL - DAY\n\nANNA\nWho *is* it?\n"_s);
        // What a script cannot say is told.
        document.clear();
        QTextCursor cursor(&document);
        cursor.setBlockFormat(ZEMScriptElement::find(Host::records(), u"Character"_s).blockFormat);
        cursor.insertText(u"bob"_s);
        QString message;
        answerNext(QMessageBox::Ok, &message);
        paste(document.toHtml(), u"bob"_s);
        QTRY_VERIFY2(message.contains(u"bob"_s), qPrintable(message));
        m_editor->clear();
        paste(u"<p>A <b>b</b></p>"_s, u"A b"_s);
        QCOMPARE(m_editor->text(), u"A b"_s);
        key(Qt::Key_F, Qt::ControlModifier);
        action(u"&Paste"_s)->trigger();
        QCOMPARE(m_window->findChild<QToolBar *>()->findChild<QLineEdit *>()->text(), u"A b"_s);
    }

    void changesAreNotLost()
    {
        open(example);
        type(u"x"_s);
        answerNext(QMessageBox::Cancel);
        QVERIFY(!m_window->close());
        QMimeData files;
        files.setText(example);
        const auto isTaken = [&files](const QList<QUrl> &urls, QWidget *target) {
            files.setUrls(urls);
            QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &files, Qt::LeftButton, {});
            QApplication::sendEvent(target, &enter);
            return enter.isAccepted();
        };
        const QUrl file = QUrl::fromLocalFile(example);
        QVERIFY(!isTaken({file, file}, m_window.data()));
        QVERIFY(!isTaken({QUrl(u"https://a.example/b"_s)}, m_window.data()));
        QVERIFY(isTaken({file}, m_editor->viewport()));
        QDropEvent drop(QPointF(500, 400), Qt::CopyAction, &files, Qt::LeftButton, {});
        answerNext(QMessageBox::Discard);
        QApplication::sendEvent(m_window.data(), &drop);
        QVERIFY(drop.isAccepted());
        QTRY_VERIFY(!m_window->isWindowModified());
        QTRY_COMPARE(placeText(), u"Title page  ·  971 words"_s);
        m_editor->undo(); // There is nothing to undo: the script is not emptied.
        QCOMPARE(m_editor->text().toUtf8(), contents(example));
        QVERIFY(!action(u"&Undo"_s)->isEnabled() && !action(u"&Redo"_s)->isEnabled());
        type(u"x"_s);
        QVERIFY(action(u"&Undo"_s)->isEnabled());
        action(u"&Undo"_s)->trigger();
        QVERIFY(!action(u"&Undo"_s)->isEnabled() && action(u"&Redo"_s)->isEnabled());
        action(u"&Redo"_s)->trigger();
        QCOMPARE(m_editor->text().toUtf8(), "x" + contents(example));
    }

    void commandsHaveKeysAndSettingsLast()
    {
        QStringList keys;
        const auto actions = m_window->menuBar()->findChildren<QAction *>();
        QCOMPARE(actions.size(), 30);
        for (const QAction *action : actions) {
            const QString shortcut = action->shortcut().toString();
            if (action->menu() || action->isSeparator())
                continue;
            QVERIFY2(!shortcut.isEmpty() && !keys.contains(shortcut), qPrintable(action->text()));
            keys.append(shortcut);
        }
        QCOMPARE(keys.size(), 22);
        QCOMPARE(m_window->size(), QSize(1440, 860));
        QCOMPARE(m_scenes->parentWidget()->width(), 220);
        QVERIFY(m_pages->isReadOnly() && m_editor->font().fixedPitch());
        const int points = m_editor->font().pointSize();
        for (int i = 0; i < 27; ++i) // down to the least size, and up again
            key(i < 20 ? Qt::Key_Minus : Qt::Key_Plus, Qt::ControlModifier);
        create(path(), "a");
        open(path());
        open(example);
        m_window->resize(1011, 555);
        auto *split = m_window->findChild<QSplitter *>();
        split->setSizes({300, 600});
        const QByteArray state = split->saveState();
        key(Qt::Key_F8);
        key(Qt::Key_F9);
        key(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(!m_pages->isVisible() && !m_scenes->isVisible());
        QVERIFY(m_window->close());
        QVERIFY(QFile::exists(m_folder->filePath(u"zemscript/zemscript.ini"_s)));
        QApplication::setPalette(QPalette(Qt::black));
        showNew();
        m_editor->setPlainText(u"[[dark]]"_s);
        QTRY_VERIFY(formatAt(u"dark"_s).foreground().color().lightness() > 128);
        QApplication::setPalette(QPalette());
        m_editor->document()->setModified(false);
        QVERIFY(!m_pages->isVisible() && !m_scenes->isVisible());
        QVERIFY(!m_window->findChild<QToolBar *>()->isVisible());
        key(Qt::Key_F8);
        QCOMPARE(m_window->findChild<QSplitter *>()->saveState(), state);
        QCOMPARE(m_editor->font().pointSize(), points + 1);
        QCOMPARE(m_window->size(), QSize(1011, 555));
        auto *recent = m_window->menuBar()->findChildren<QMenu *>().at(1);
        Q_EMIT recent->aboutToShow();
        QCOMPARE(recent->actions().value(1)->text(), path());
        recent->actions().value(0)->trigger();
        QCOMPARE(m_editor->text().toUtf8(), contents(example));
        QVERIFY(QFile::remove(path()));
        QString message;
        answerNext(QMessageBox::Ok, &message);
        recent->actions().value(1)->trigger();
        QVERIFY2(message.endsWith(u"no such file"_s), qPrintable(message));
    }

    // With TST_WINDOW_LETTERS=200 it is the measurement of a long spell of typing.
    void typingDoesNotStall()
    {
        create(path(), contents(example).repeated(26)); // more than 130 pages
        open(path());
        QTRY_VERIFY(m_scenes->model()->rowCount() > 200);
        goTo(u"Glass all round"_s, 13);
        QTRY_VERIFY(placeText().startsWith(u"Action  ·  Page 60 of 130"_s));
        QTest::qWait(500);
        m_scenes->scrollToTop();
        QElapsedTimer clock;
        qint64 gap = 0;
        QTimer ticks;
        connect(&ticks, &QTimer::timeout, this, [&] { gap = std::max(gap, clock.restart()); });
        ticks.start(1);
        clock.start();
        const int letters = qEnvironmentVariable("TST_WINDOW_LETTERS", u"20"_s).toInt();
        for (int i = 0; i < letters; ++i) {
            QTest::keyClick(m_editor, i % 7 == 6 ? Qt::Key_Space : Qt::Key_A);
            QTest::qWait(i % 20 == 19 ? 600 : 67); // At a pause the script is read.
        }
        QCOMPARE(m_scenes->verticalScrollBar()->value(), 0); // The list stays where it was.
        qInfo("%s, longest gap %lld ms", qPrintable(placeText()), gap);
        QVERIFY(gap < 500); // It is a tenth of that on an idle machine.
    }

private:
    QString path() const { return m_folder->filePath(u"s.fountain"_s); }

    static QDir copies()
    {
        return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                    + u"/unsaved"_s);
    }

    static int copyCount() { return int(copies().entryList({u"*.copy"_s}).size()); }

    QWidget *otherWindow() const
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (qobject_cast<Host::Window *>(widget) && widget->isVisible()
                && widget != m_window.data())
                return widget;
        }
        return nullptr;
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

    void paste(const QString &html, const QString &text)
    {
        auto *copied = new QMimeData; // The clipboard takes it.
        copied->setHtml(html);
        copied->setText(text);
        QApplication::clipboard()->setMimeData(copied);
        key(Qt::Key_V, Qt::ControlModifier);
    }

    QAction *action(const QString &text) const
    {
        const auto all = m_window->menuBar()->findChildren<QAction *>();
        return *std::find_if(all.begin(), all.end(),
                             [&text](const QAction *one) { return one->text() == text; });
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

    void selectBetweenBars(QString text)
    {
        const int from = int(text.indexOf(u'|')), to = int(text.lastIndexOf(u'|')) - 1;
        m_editor->setPlainText(text.remove(u'|'));
        QTextCursor cursor = m_editor->textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        m_editor->setTextCursor(cursor);
    }

    QString textWithBars() const
    {
        const QTextCursor cursor = m_editor->textCursor();
        QString text = m_editor->text();
        return text.insert(cursor.selectionEnd(), u'|').insert(cursor.selectionStart(), u'|');
    }

    /// How the first letter of \a text looks in the editor.
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

    QTemporaryDir m_data;
    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Host::Window> m_window;
    Host::ScriptEditor *m_editor = nullptr;
    Host::PagesView *m_pages = nullptr;
    QListView *m_scenes = nullptr;
};

// QTEST_MAIN() would take margins for those of a screen with 96 dots an inch, which it need not be.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    WindowTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_window.moc"
