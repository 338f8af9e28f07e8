// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "dump.h"
#include "host/window.h"
#include "parser/qfnfastparser.h"

#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtGui/QDropEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListView>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTextEdit>

namespace {

const QString example = QStringLiteral(EXAMPLES "/the-lamp-keeper.fountain");

/// Presses a button of the question that comes up next.
void answerNext(QMessageBox::StandardButton button)
{
    QTimer::singleShot(0, qApp, [button] {
        auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(question);
        question->button(button)->click();
    });
}

} // namespace

class TestWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.reset(new QTemporaryDir);
        m_window.reset(new Host::Window);
        m_editor = m_window->findChild<QTextEdit *>();
        m_box = m_window->findChild<QComboBox *>();
        m_window->show();
    }

    void kindIsOneStepOfUndo()
    {
        open();
        const QString before = m_editor->toHtml();
        m_editor->selectAll();
        choose(u"Dialogue"_s);
        QCOMPARE(m_editor->textCursor().block().blockFormat().leftMargin(), 96.0);
        m_editor->undo();
        QCOMPARE(m_editor->toHtml(), before);
    }

    void scenesLeadToTheirHeadings()
    {
        open();
        auto *scenes = m_window->findChild<QListView *>();
        QCOMPARE(scenes->model()->rowCount(), 9);
        const QModelIndex fourth = scenes->model()->index(3, 0);
        Q_EMIT scenes->clicked(fourth);
        QCOMPARE(m_editor->textCursor().block().text().toUpper(), fourth.data().toString());
        type(u"new "_s);
        QTRY_VERIFY(scenes->currentIndex().data().toString().startsWith(u"NEW "_s));
    }

    void changesAreNotLost()
    {
        open();
        QVERIFY(!m_window->isWindowModified());
        QVERIFY(m_window->windowTitle().contains(u"the-lamp-keeper.fountain"_s));
        type(u"x"_s);
        QVERIFY(m_window->isWindowModified());
        answerNext(QMessageBox::Cancel);
        QVERIFY(!m_window->close());
        save();
        QVERIFY(!m_window->isWindowModified());
        type(u"y"_s);
        answerNext(QMessageBox::Save);
        QVERIFY(m_window->close());
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().contains("xy"));
        QString error;
        QVERIFY(!m_window->save(m_folder->filePath(u"none/a"_s), &error) && !error.isEmpty());
    }

    void droppedFileIsOpened()
    {
        type(u"x"_s);
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(example)});
        files.setText(example);
        QDragEnterEvent enter(QPoint(500, 400), Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(m_editor->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(500, 400), Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(m_window.data(), &drop);
        answerNext(QMessageBox::Discard);
        QTRY_VERIFY(m_window->windowTitle().contains(u"the-lamp-keeper.fountain"_s));
        QVERIFY(m_editor->toPlainText().contains(u"LAMP ROOM"_s));
    }

private:
    QString path() const { return m_folder->filePath(u"s.fountain"_s); }

    void open()
    {
        QString error;
        QVERIFY2(m_window->open(example, &error), qPrintable(error));
    }

    void save()
    {
        QString error;
        QVERIFY2(m_window->save(path(), &error), qPrintable(error));
    }

    void type(const QString &text, Qt::Key key = Qt::Key_unknown,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClicks(m_editor, text);
        if (key != Qt::Key_unknown)
            QTest::keyClick(m_editor, key, modifiers);
    }

    void choose(const QString &kind)
    {
        m_box->setCurrentText(kind);
        Q_EMIT m_box->activated(m_box->currentIndex());
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<Host::Window> m_window;
    QTextEdit *m_editor = nullptr;
    QComboBox *m_box = nullptr;
};

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
