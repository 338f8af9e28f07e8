// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/window.h"

#include "host/findbar.h"
#include "host/formats.h"
#include "host/highlighter.h"
#include "host/pagesview.h"
#include "host/pdf.h"
#include "host/scripteditor.h"
#include "model/literals_p.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QSettings>
#include <QtGui/QCloseEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStatusBar>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

using Zem::operator""_L1;

constexpr auto readDelay = 250ms; // of typing, before the script is read
constexpr auto copyDelay = 2s;    // the most that a crash may cost
constexpr auto diskDelay = 200ms; // another program may still be writing
constexpr int recentCount = 8;
constexpr QLatin1String program = "zemscript"_L1;

QSettings settings()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, program, program);
}

bool isDark(const QPalette &colours)
{
    return colours.color(QPalette::Base).lightness() < colours.color(QPalette::Text).lightness();
}

bool isRichText(const QString &path)
{
    return QFileInfo(path).suffix().compare("html"_L1, Qt::CaseInsensitive) == 0;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.exists() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Host::Window::Window()
    : m_editor(new ScriptEditor)
    , m_pages(new PagesView)
    , m_findBar(new FindBar(m_editor))
    , m_beside(new QSplitter)
    , m_sceneView(new QListView)
    , m_place(new QLabel)
    , m_highlighter(new Highlighter(m_editor->document()))
{
    m_beside->addWidget(m_editor);
    m_beside->addWidget(m_pages);
    m_beside->setSizes({520, 700});
    setCentralWidget(m_beside);
    addToolBar(Qt::BottomToolBarArea, m_findBar);
    setAcceptDrops(true);
    statusBar()->addPermanentWidget(m_place);
    resize(1440, 860);
    addFileMenu();
    addEditMenu();
    addViewMenu();

    m_copyTimer.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &Window::read);
    connect(&m_copyTimer, &QTimer::timeout, this, [this] {
        if (m_recovery.hasFailed())
            statusBar()->showMessage("No copy of the unsaved text can be put aside."_L1);
        m_recovery.put(m_path, m_editor->text());
    });
    connect(m_editor->document(), &QTextDocument::contentsChange, this, [this] {
        if (m_revision == m_editor->document()->revision())
            return; // The text is the same, only its look is another.
        m_revision = m_editor->document()->revision();
        m_pause.start(readDelay);
        if (!m_copyTimer.isActive())
            m_copyTimer.start(copyDelay);
    });
    connect(m_editor->document(), &QTextDocument::modificationChanged, this, [this](bool modified) {
        setWindowModified(modified);
        if (!modified) {
            m_copyTimer.stop();
            m_recovery.remove();
        }
    });
    connect(m_editor, &ScriptEditor::richTextInserted, this, &Window::tell);
    connect(m_editor, &QPlainTextEdit::cursorPositionChanged, this, &Window::showPlace);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this,
            [this] { m_diskPause.start(diskDelay); });
    m_diskPause.setSingleShot(true);
    connect(&m_diskPause, &QTimer::timeout, this, &Window::checkDisk);
    const QSettings kept = settings();
    restoreGeometry(kept.value(QStringLiteral("geometry")).toByteArray());
    restoreState(kept.value(QStringLiteral("state")).toByteArray());
    m_findBar->hide();
    m_beside->restoreState(kept.value(QStringLiteral("split")).toByteArray());
    zoom(kept.value(QStringLiteral("zoom")).toInt());
    m_highlighter->setDark(isDark(palette()));
    setText(QString(), QString(), false);
    m_editor->setFocus();
    QMetaObject::invokeMethod(this, &Window::offerLeftBehind, Qt::QueuedConnection);
}

/// A window beside this one, which goes when it is closed.
Host::Window *Host::Window::another()
{
    auto *window = new Window;
    window->setAttribute(Qt::WA_DeleteOnClose);
    return window;
}

QAction *Host::Window::add(QMenu *menu, const QString &text, const QString &keys,
                           const std::function<void()> &command)
{
    QAction *action = menu->addAction(text);
    action->setShortcuts(QKeySequence::listFromString(keys));
    connect(action, &QAction::triggered, this, command);
    return action;
}

// The keys are customary ones: not all platforms have a standard key for each.
void Host::Window::addFileMenu()
{
    QMenu *menu = menuBar()->addMenu("&File"_L1);
    add(menu, "&New"_L1, QStringLiteral("Ctrl+N"), [] { another()->show(); });
    add(menu, "&Open..."_L1, QStringLiteral("Ctrl+O"), [this] {
        openAfterQuestion(QFileDialog::getOpenFileName(
            this, "Open"_L1, m_path, "Scripts (*.fountain *.txt *.html);;All files (*)"_L1));
    });
    QMenu *recent = menu->addMenu("Open &Recent"_L1);
    connect(recent, &QMenu::aboutToShow, this, [this, recent] { listRecent(recent); });
    add(menu, "&Save"_L1, QStringLiteral("Ctrl+S"), [this] { saveTo(m_path); });
    add(menu, "Save &As..."_L1, QStringLiteral("Ctrl+Shift+S"), [this] { saveTo(QString()); });
    add(menu, "&Export..."_L1, QStringLiteral("Ctrl+E"), [this] { exportAs(); });
    add(menu, "&Quit"_L1, QStringLiteral("Ctrl+Q"), &QApplication::closeAllWindows);
}

void Host::Window::addEditMenu()
{
    QMenu *menu = menuBar()->addMenu("&Edit"_L1);
    QAction *undo = add(menu, "&Undo"_L1, QStringLiteral("Ctrl+Z"), [this] { m_editor->undo(); });
    QAction *redo =
        add(menu, "&Redo"_L1, QStringLiteral("Ctrl+Shift+Z"), [this] { m_editor->redo(); });
    redo->setEnabled(false); // Of undo the first text tells.
    connect(m_editor, &QPlainTextEdit::undoAvailable, undo, &QAction::setEnabled);
    connect(m_editor, &QPlainTextEdit::redoAvailable, redo, &QAction::setEnabled);
    menu->addSeparator();
    // The find bar and the pages have these too.
    const auto whereFocusIs = [this](const char *slot) {
        return [this, slot] { QMetaObject::invokeMethod(focusWidget(), slot); };
    };
    add(menu, "Cu&t"_L1, QStringLiteral("Ctrl+X"), whereFocusIs("cut"));
    add(menu, "&Copy"_L1, QStringLiteral("Ctrl+C"), whereFocusIs("copy"));
    add(menu, "&Paste"_L1, QStringLiteral("Ctrl+V"), whereFocusIs("paste"));
    menu->addSeparator();
    add(menu, "&Find and Replace..."_L1, QStringLiteral("Ctrl+F; Ctrl+H"),
        [this] { m_findBar->open(); });
    add(menu, "Find Ne&xt"_L1, QStringLiteral("F3"), [this] { m_findBar->find(); });
    add(menu, "Find Pre&vious"_L1, QStringLiteral("Shift+F3"),
        [this] { m_findBar->find(QTextDocument::FindBackward); });
    menu->addSeparator();
    const auto emphasis = [this](const char *mark) {
        return [this, mark] { m_editor->toggleEmphasis(QLatin1String(mark)); };
    };
    add(menu, "&Bold"_L1, QStringLiteral("Ctrl+B"), emphasis("**"));
    add(menu, "&Italic"_L1, QStringLiteral("Ctrl+I"), emphasis("*"));
    add(menu, "U&nderline"_L1, QStringLiteral("Ctrl+U"), emphasis("_"));
    add(menu, "N&ote"_L1, QStringLiteral("Ctrl+Shift+N"),
        [this] { m_editor->toggleAround(QStringLiteral("[["), QStringLiteral("]]")); });
    add(menu, "Co&mment"_L1, QStringLiteral("Ctrl+/"),
        [this] { m_editor->toggleAround(QStringLiteral("/*"), QStringLiteral("*/")); });
}

void Host::Window::addViewMenu()
{
    m_sceneView->setModel(&m_scenes);
    m_sceneView->setWordWrap(true);
    m_sceneView->setResizeMode(QListView::Adjust);
    m_sceneView->setSpacing(2);
    m_sceneView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_sceneView->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // or Qt cuts what it wraps
    m_sceneView->setEditTriggers(QListView::NoEditTriggers);
    const auto goToScene = [this](const QModelIndex &scene) {
        m_editor->goTo(m_outline.script.at(m_outline.headings.at(scene.row())).start);
        m_editor->setFocus();
    };
    connect(m_sceneView, &QListView::clicked, this, goToScene);
    connect(m_sceneView, &QListView::activated, this, goToScene);
    auto *dock = new QDockWidget("Scenes"_L1);
    dock->setObjectName(QStringLiteral("scenes")); // for saveState()
    dock->setWidget(m_sceneView);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {220}, Qt::Horizontal);

    QMenu *menu = menuBar()->addMenu("&View"_L1);
    QAction *pages = menu->addAction("&Pages"_L1);
    pages->setCheckable(true);
    pages->setShortcut(QKeySequence(Qt::Key_F8));
    pages->setChecked(settings().value(QStringLiteral("pages"), true).toBool());
    m_pages->setVisible(pages->isChecked());
    connect(pages, &QAction::toggled, m_pages, &QWidget::setVisible);
    dock->toggleViewAction()->setShortcut(QKeySequence(Qt::Key_F9));
    menu->addAction(dock->toggleViewAction());
    add(menu, "&Larger"_L1, QStringLiteral("Ctrl++"), [this] { zoom(1); });
    add(menu, "&Smaller"_L1, QStringLiteral("Ctrl+-"), [this] { zoom(-1); });
}

bool Host::Window::open(const QString &path, QString *error)
{
    const bool isNameless = !QFileInfo::exists(path) && QFileInfo(path).suffix().isEmpty();
    const QFileInfo info(isNameless ? path + QLatin1String(".fountain") : path);
    const bool comesIn = isRichText(path);
    QString text;
    QStringList messages;
    TextForm form;
    if ((comesIn || info.exists()) && !readText(info.filePath(), &text, error, &form))
        return false;
    if (comesIn) {
        text = fountainFrom(text, &messages);
        if (text.isNull())
            return fail(path, "has no paragraphs of a script"_L1, error);
        form = TextForm();
    }
    m_form = form;
    setText(text, comesIn ? QString() : info.filePath(), comesIn);
    tell(messages);
    return true;
}

bool Host::Window::save(const QString &path, QString *error)
{
    if (isRichText(path))
        return fail(path, "rich text is written by Export"_L1, error);
    if (!saveBytes(path, toBytes(m_editor->text(), m_form), error)) {
        m_editor->document()->setModified(true);
        return false;
    }
    m_editor->document()->setModified(false);
    setPath(path);
    return true;
}

void Host::Window::setText(const QString &text, const QString &path, bool modified)
{
    m_editor->setPlainText(text);
    setPath(path);
    // Characters that end a line in Qt's text come back as line ends: that is a change.
    const bool changed = modified || m_editor->text() != text;
    m_editor->document()->setModified(true); // An empty text keeps an older state otherwise.
    m_editor->document()->setModified(changed);
    if (changed)
        m_recovery.put(m_path, text);
    read();
}

void Host::Window::setPath(const QString &path)
{
    const QFileInfo info(path);
    m_path = path.isEmpty() ? QString() : info.absoluteFilePath();
    m_onDisk = bytesOf(m_path);
    setWindowTitle((path.isEmpty() ? QString("Untitled"_L1) : info.fileName())
                   + QLatin1String("[*] - zemscript"));
    if (!info.exists())
        return;
    m_watcher.addPath(m_path);
    QSettings kept = settings();
    QStringList recent = kept.value(QStringLiteral("recent")).toStringList();
    recent.removeAll(m_path);
    recent.prepend(m_path);
    kept.setValue(QStringLiteral("recent"), QStringList(recent.mid(0, recentCount)));
}

void Host::Window::listRecent(QMenu *menu)
{
    menu->clear();
    const QStringList recent = settings().value(QStringLiteral("recent")).toStringList();
    for (const QString &path : recent)
        add(menu, path, QString(), [this, path] { openAfterQuestion(path); });
}

/// Tells what the export could not write of rich text that has come in. Later: the program that it
/// was dropped from waits until then.
void Host::Window::tell(const QStringList &messages)
{
    const auto warn = [this, messages] { warnUnless(false, messages.join(u'\n')); };
    if (!messages.isEmpty())
        QMetaObject::invokeMethod(this, warn, Qt::QueuedConnection);
}

bool Host::Window::warnUnless(bool done, const QString &error)
{
    if (!done)
        QMessageBox::warning(this, program, error);
    return done;
}

bool Host::Window::mayLoseChanges()
{
    if (!isWindowModified())
        return true;
    const auto answer = QMessageBox::question(
        this, program, "Save the changes to this script?"_L1,
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Save ? saveTo(m_path) : answer == QMessageBox::Discard;
}

void Host::Window::openAfterQuestion(const QString &path)
{
    QString error;
    if (!path.isEmpty() && !QFileInfo::exists(path))
        warnUnless(fail(path, "no such file"_L1, &error), error);
    else if (!path.isEmpty() && mayLoseChanges())
        warnUnless(open(path, &error), error);
}

/// A path to write to, with one of \a endings where the name has none. Empty if there is none.
QString Host::Window::askForPath(const QString &title, const QStringList &endings)
{
    QFileDialog dialog(this, title, QFileInfo(m_path).path());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    QStringList filters;
    for (const QString &ending : endings)
        filters.append(QLatin1String("*.") + ending);
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(endings.first());
    dialog.selectFile(QFileInfo(m_path).completeBaseName());
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog](const QString &filter) { dialog.setDefaultSuffix(filter.mid(2)); });
    return dialog.exec() ? dialog.selectedFiles().value(0) : QString();
}

bool Host::Window::saveTo(QString path)
{
    if (path.isEmpty()) {
        path = askForPath("Save As"_L1, {QStringLiteral("fountain")});
    } else if (bytesOf(path) != m_onDisk
               && QMessageBox::question(this, program,
                                        QFileInfo(path).fileName()
                                            + " was changed by another program. Save over it?"_L1,
                                        QMessageBox::Save | QMessageBox::Cancel)
                      != QMessageBox::Save) {
        return false;
    }
    QString error;
    return !path.isEmpty() && warnUnless(save(path, &error), error);
}

void Host::Window::exportAs()
{
    const QString path = askForPath("Export"_L1, formatNames().split(QStringLiteral(", ")));
    if (path.isEmpty())
        return;
    QString error;
    const Format *format = formatOf(QFileInfo(path).suffix());
    if (!format || path == m_path) {
        fail(path, format ? "is the script itself"_L1 : "unknown ending"_L1, &error);
    } else {
        const QString name = QFileInfo(m_path).completeBaseName();
        const QByteArray bytes =
            format->make({m_editor->text(), name, false, customaryPaper()}, &error);
        if (error.isEmpty() || !bytes.isEmpty())
            saveBytes(path, bytes, &error);
    }
    warnUnless(error.isEmpty(), error);
}

/// Takes over what another program has written, unless there are changes here: then saving asks.
void Host::Window::checkDisk()
{
    m_watcher.addPath(m_path); // A file that is replaced, by a save too, is watched no more.
    if (bytesOf(m_path) == m_onDisk)
        return;
    if (!QFileInfo::exists(m_path)) {
        m_editor->document()->setModified(true); // What is here is the last of it.
    } else if (!isWindowModified()) {
        const int position = m_editor->textCursor().position();
        QString error;
        if (!warnUnless(open(m_path, &error), error))
            return;
        QTextCursor cursor = m_editor->textCursor();
        cursor.setPosition(std::min(position, m_editor->document()->characterCount() - 1));
        m_editor->setTextCursor(cursor);
    }
    statusBar()->showMessage("The file was changed by another program."_L1, 10000);
}

void Host::Window::offerLeftBehind()
{
    static QStringList asked; // in this run of the program, by another window too
    const QStringList files = Recovery::leftBehind();
    for (const QString &file : files) {
        Recovery::Copy copy;
        if (asked.contains(file) || !Recovery::read(file, &copy))
            continue;
        asked.append(file);
        const QString name =
            copy.path.isEmpty() ? QString("Untitled"_L1) : QFileInfo(copy.path).fileName();
        const bool isOlder = copy.time < QFileInfo(copy.path).lastModified();
        const auto answer = QMessageBox::question(
            this, program,
            QStringLiteral("%1 was not saved when its window came to an end. Open the copy of %2?")
                    .arg(name, QLocale().toString(copy.time, QLocale::ShortFormat))
                + (isOlder ? " The file on the disk is newer."_L1 : ""_L1),
            QMessageBox::Open | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Open);
        if (answer == QMessageBox::Cancel)
            continue;
        if (answer == QMessageBox::Open) {
            const bool here = !isWindowModified() && (m_path.isEmpty() || m_path == copy.path);
            Window *window = here ? this : another();
            QString ignored, error;
            if (QFileInfo::exists(copy.path))
                readText(copy.path, &ignored, &error, &window->m_form);
            window->setText(copy.text, copy.path, true);
            window->show();
            if (window->m_recovery.hasFailed())
                continue;
        }
        QFile::remove(file);
    }
}

/// Reads the script in the thread. What was read is shown unless the text is another by then.
void Host::Window::read()
{
    m_pause.stop(); // The text is read once, one that was just opened too.
    const int revision = m_editor->document()->revision();
    m_reader.start([this, text = m_editor->text(), revision] {
        const auto take = [this, outline = outlineOf(text), revision] {
            if (revision == m_editor->document()->revision())
                showOutline(outline);
        };
        QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
    });
}

void Host::Window::showOutline(const Outline &outline)
{
    m_outline = outline;
    m_highlighter->setScript(outline.script);
    m_editor->setOffers(outline.characters, outline.places);
    // A list that is set anew loses its place.
    if (outline.scenes != m_scenes.stringList())
        m_scenes.setStringList(outline.scenes);
    const auto showPages = [this] {
        m_pages->setScript(m_outline.script);
        m_paragraph.reset();
        showPlace();
    };
    // By itself: keys that were pressed meanwhile go first.
    QMetaObject::invokeMethod(this, showPages, Qt::QueuedConnection);
}

/// Shows in the pages, the scenes and the status bar where the cursor is.
void Host::Window::showPlace()
{
    const int paragraph = m_outline.paragraphAt(m_editor->textCursor().position());
    if (m_paragraph == paragraph)
        return;
    m_paragraph = paragraph;
    m_pages->showParagraph(paragraph);
    m_sceneView->setCurrentIndex(m_scenes.index(m_outline.sceneOf(paragraph)));
    m_place->setText(m_outline.placeOf(paragraph));
}

void Host::Window::zoom(int points)
{
    const int wanted = std::max(-6, std::min(m_zoom + points, 60));
    m_editor->zoomIn(wanted - m_zoom);
    m_zoom = wanted;
}

void Host::Window::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    m_highlighter->setDark(isDark(palette()));
}

void Host::Window::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayLoseChanges());
    if (!event->isAccepted())
        return;
    m_copyTimer.stop();
    m_recovery.remove();
    QSettings kept = settings();
    kept.setValue(QStringLiteral("geometry"), saveGeometry());
    kept.setValue(QStringLiteral("state"), saveState());
    kept.setValue(QStringLiteral("split"), m_beside->saveState());
    kept.setValue(QStringLiteral("pages"), !m_pages->isHidden());
    kept.setValue(QStringLiteral("zoom"), m_zoom);
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
    const auto take = [this, path] { openAfterQuestion(path); };
    QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
}
