// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_WINDOW_H
#define HOST_WINDOW_H

#include "host/files.h"
#include "host/outline.h"
#include "host/recovery.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QStringListModel>
#include <QtCore/QTimer>
#include <QtWidgets/QMainWindow>

#include <functional>
#include <optional>

class QLabel;
class QListView;
class QSplitter;

namespace Host {

class FindBar;
class Highlighter;
class PagesView;
class ScriptEditor;

/// The editing window: the text of one script, with its pages beside it and its scenes at the side.
///
/// What is shown beside the text comes from a reading of the script in a thread of its own, which
/// begins when typing pauses. Unsaved text is put aside meanwhile, and a new window offers what
/// earlier ones left behind.
class Window : public QMainWindow
{
    Q_OBJECT

public:
    /// A window with an empty script.
    Window();

    /// Puts the script at \a path in the place of the one in the window, without a question. A path
    /// where there is no file gives an empty script of that name; rich text (.html) comes in as
    /// Fountain without a name. On failure the window is as it was and one line is in \a error.
    bool open(const QString &path, QString *error);

    /// Writes the script to \a path, where it belongs from then on, in the form that its file had.
    /// On failure the older file is as it was, the script counts as unsaved and one line is in
    /// \a error.
    bool save(const QString &path, QString *error);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    static Window *another();
    QAction *add(QMenu *menu, const QString &text, const QString &keys,
                 const std::function<void()> &command);
    void addFileMenu();
    void addEditMenu();
    void addViewMenu();
    void setText(const QString &text, const QString &path, bool modified);
    void setPath(const QString &path);
    void listRecent(QMenu *menu);
    void tell(const QStringList &messages);
    bool warnUnless(bool done, const QString &error);
    QString askForPath(const QString &title, const QStringList &endings);
    bool mayLoseChanges();
    void openAfterQuestion(const QString &path);
    bool saveTo(QString path); // asks for a path if it is empty
    void exportAs();
    void checkDisk();
    void offerLeftBehind();
    void read();
    void showOutline(const Outline &outline);
    void showPlace();
    void zoom(int points);

    ScriptEditor *m_editor;
    PagesView *m_pages;
    FindBar *m_findBar;
    QSplitter *m_beside; ///< The script and its pages.
    QListView *m_sceneView;
    QLabel *m_place;
    Highlighter *m_highlighter;
    QStringListModel m_scenes;
    Outline m_outline;
    int m_revision = -1;            ///< Of the text when it last changed.
    int m_zoom = 0;                 ///< Points that the text is larger than by custom.
    std::optional<int> m_paragraph; ///< What is shown to be under the cursor, -1 in no paragraph.
    QString m_path;                 ///< Empty for a script that was never saved.
    TextForm m_form;
    QByteArray m_onDisk; ///< The bytes of the file when it was last read or written.
    QFileSystemWatcher m_watcher;
    QTimer m_pause;     ///< Runs from a change until the script is read again.
    QTimer m_copyTimer; ///< Runs from a change until a copy is put aside.
    QTimer m_diskPause; ///< Runs from a change of the file until it is looked at.
    Recovery m_recovery;
    QThreadPool m_reader; ///< The last member: it waits for its threads before any other goes.
};

} // namespace Host

#endif
