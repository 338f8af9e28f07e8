// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_WINDOW_H
#define HOST_WINDOW_H

#include <QtCore/QStringListModel>
#include <QtCore/QTimer>
#include <QtCore/QVector>
#include <QtWidgets/QMainWindow>

class QComboBox;
class QListView;

namespace Host {

class ScriptPage;

/// The editing window: one script on its page, the kind of the paragraph under the cursor, and the
/// scenes at the side.
class Window : public QMainWindow
{
    Q_OBJECT

public:
    /// A window with an empty script.
    Window();

    /// Puts the script at \a path in the place of the one in the window, without a question. One
    /// step of undo. On failure the window is as it was and one line is in \a error.
    bool open(const QString &path, QString *error);

    /// Writes the script to \a path, where it belongs from then on. On failure the older file is as
    /// it was, the script counts as unsaved and one line is in \a error.
    bool save(const QString &path, QString *error);

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void addMenus();
    void addBox();
    void addScenes();
    void setPath(const QString &path);
    bool warnUnless(bool done, const QString &error);
    bool mayLoseChanges();
    void askAndOpen();
    void openAfterQuestion(const QString &path);
    bool saveTo(QString path); // asks for a path if it is empty
    void exportPdf();
    void showPlace();
    void listScenes();
    void goToScene(const QModelIndex &scene);

    ScriptPage *m_page;
    QComboBox *m_kinds;
    QListView *m_sceneView;
    QStringListModel m_scenes;
    QVector<int> m_headings; ///< The number of the block of each scene.
    QTimer m_sceneTimer;     ///< Runs from a change until the scenes are listed again.
    QString m_path;          ///< Empty for a script that was never saved.
};

} // namespace Host

#endif
