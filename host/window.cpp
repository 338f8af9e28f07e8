// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/window.h"

#include "host/exporting.h"
#include "host/files.h"
#include "host/page.h"
#include "host/pdf.h"
#include "host/records.h"
#include "host/titlepage.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QCloseEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolBar>

#include <algorithm>

namespace {

constexpr char scripts[] = "Fountain (*.fountain);;All files (*)";

} // namespace

Host::Window::Window()
    : m_page(new ScriptPage)
    , m_kinds(new QComboBox)
    , m_sceneView(new QListView)
{
    setCentralWidget(m_page);
    setAcceptDrops(true);
    setPath(QString());
    addMenus();
    addBox();
    addScenes();
    connect(m_page->document(), &QTextDocument::modificationChanged, this,
            &Window::setWindowModified);
    connect(m_page, &QTextEdit::cursorPositionChanged, this, &Window::showPlace);
    connect(m_page, &QTextEdit::textChanged, this, &Window::showPlace);
    resize(1040, 800);
    m_page->setFocus();
}

void Host::Window::addMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), this, &Window::askAndOpen)->setShortcut(QKeySequence::Open);
    file->addAction(tr("&Save"), this, [this] { saveTo(m_path); })->setShortcut(QKeySequence::Save);
    file->addAction(tr("Save &As..."), this, [this] { saveTo(QString()); })
        ->setShortcut(QKeySequence::SaveAs);
    file->addAction(tr("Export as &PDF..."), this, &Window::exportPdf)
        ->setShortcut(QKeySequence::Print);
    file->addAction(tr("&Quit"), this, &Window::close)->setShortcut(QKeySequence::Quit);

    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    QAction *undo = edit->addAction(tr("&Undo"), m_page, &QTextEdit::undo);
    undo->setShortcut(QKeySequence::Undo);
    QAction *redo = edit->addAction(tr("&Redo"), m_page, &QTextEdit::redo);
    redo->setShortcut(QKeySequence::Redo);
    undo->setEnabled(false);
    redo->setEnabled(false);
    connect(m_page, &QTextEdit::undoAvailable, undo, &QAction::setEnabled);
    connect(m_page, &QTextEdit::redoAvailable, redo, &QAction::setEnabled);
}

void Host::Window::addBox()
{
    m_kinds->addItems(ScriptPage::kindNames());
    m_kinds->setMaxVisibleItems(m_kinds->count());
    connect(m_kinds, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        m_page->setKind(index);
        showPlace();
        m_page->setFocus();
    });
    addToolBar(tr("Paragraph"))->addWidget(m_kinds);
    showPlace();
}

void Host::Window::addScenes()
{
    m_sceneView->setModel(&m_scenes);
    m_sceneView->setWordWrap(true);
    m_sceneView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_sceneView->setEditTriggers(QListView::NoEditTriggers);
    connect(m_sceneView, &QListView::clicked, this, &Window::goToScene);
    connect(m_sceneView, &QListView::activated, this, &Window::goToScene);
    auto *dock = new QDockWidget(tr("Scenes"));
    dock->setFeatures(QDockWidget::DockWidgetMovable); // There is no way to get a closed one back.
    dock->setWidget(m_sceneView);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {280}, Qt::Horizontal);
    m_sceneTimer.setSingleShot(true);
    m_sceneTimer.setInterval(200);
    connect(&m_sceneTimer, &QTimer::timeout, this, &Window::listScenes);
    connect(m_page, &QTextEdit::textChanged, &m_sceneTimer, QOverload<>::of(&QTimer::start));
}

bool Host::Window::open(const QString &path, QString *error)
{
    QString text;
    if (!readText(path, &text, error))
        return false;
    m_page->setScript(text);
    setPath(path);
    listScenes();
    return true;
}

bool Host::Window::save(const QString &path, QString *error)
{
    if (!saveBytes(path, exportScript(*m_page->document()).toUtf8(), error))
        return false;
    m_page->document()->setModified(false);
    setPath(path);
    return true;
}

void Host::Window::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayLoseChanges());
}

void Host::Window::dragEnterEvent(QDragEnterEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.first().isLocalFile())
        event->acceptProposedAction();
}

void Host::Window::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    // Later: a question would hold up the program that the file comes from.
    const QString path = event->mimeData()->urls().first().toLocalFile();
    QTimer::singleShot(0, this, [this, path] { openAfterQuestion(path); });
}

void Host::Window::setPath(const QString &path)
{
    const QFileInfo info(path);
    m_path = path.isEmpty() ? QString() : info.absoluteFilePath();
    const QString name = path.isEmpty() ? tr("Untitled") : info.fileName();
    setWindowTitle(name + QLatin1String("[*] - zemscript"));
}

bool Host::Window::warnUnless(bool done, const QString &error)
{
    if (!done)
        QMessageBox::warning(this, QStringLiteral("zemscript"), error);
    return done;
}

bool Host::Window::mayLoseChanges()
{
    if (!isWindowModified())
        return true;
    const auto answer = QMessageBox::question(
        this, QStringLiteral("zemscript"), tr("Save the changes to this script?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Save ? saveTo(m_path) : answer == QMessageBox::Discard;
}

void Host::Window::askAndOpen()
{
    openAfterQuestion(QFileDialog::getOpenFileName(this, tr("Open"), m_path, tr(scripts)));
}

void Host::Window::openAfterQuestion(const QString &path)
{
    QString error;
    if (!path.isEmpty() && mayLoseChanges())
        warnUnless(open(path, &error), error);
}

bool Host::Window::saveTo(QString path)
{
    if (path.isEmpty())
        path = QFileDialog::getSaveFileName(this, tr("Save As"), m_path, tr(scripts));
    QString error;
    return !path.isEmpty() && warnUnless(save(path, &error), error);
}

void Host::Window::exportPdf()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Export as PDF"), QString(), tr("PDF (*.pdf)"));
    QString error;
    if (path.isEmpty())
        return;
    const auto script = read(exportScript(*m_page->document()));
    const QByteArray pdf = toPdf(layOut(script), titleOf(script), customaryPaper(), &error);
    warnUnless(!pdf.isEmpty() && saveBytes(path, pdf, &error), error);
}

/// Shows the kind and the scene of the paragraph under the cursor.
void Host::Window::showPlace()
{
    const QTextBlock block = m_page->textCursor().block();
    m_kinds->setCurrentIndex(m_page->kind());
    const auto next = std::upper_bound(m_headings.cbegin(), m_headings.cend(), block.blockNumber());
    m_sceneView->setCurrentIndex(m_scenes.index(int(next - m_headings.cbegin()) - 1));
}

void Host::Window::listScenes()
{
    QStringList titles;
    m_headings.clear();
    for (QTextBlock block = m_page->document()->begin(); block.isValid(); block = block.next()) {
        if (block.length() > 1 && typeOf(block) == QFnElement::SceneHeading) {
            m_headings.append(block.blockNumber());
            titles.append(block.text().toUpper());
        }
    }
    // A list that is set anew loses its place.
    if (titles != m_scenes.stringList())
        m_scenes.setStringList(titles);
    showPlace();
}

void Host::Window::goToScene(const QModelIndex &scene)
{
    const QTextBlock block = m_page->document()->findBlockByNumber(m_headings.at(scene.row()));
    if (!block.isValid()) // deleted since the scenes were listed
        return;
    m_page->setTextCursor(QTextCursor(block));
    const QRectF place = m_page->document()->documentLayout()->blockBoundingRect(block);
    m_page->verticalScrollBar()->setValue(int(place.top()));
    m_page->setFocus();
}
