// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_PAGE_H
#define HOST_PAGE_H

#include <QtCore/QStringList>
#include <QtWidgets/QTextEdit>

namespace Host {

/// A page to write a script on: a text whose every paragraph has a kind as soon as it has text.
///
/// Tab and Shift+Tab go through the kinds that scenes are made of. Return goes on to the kind that
/// follows, Shift+Return to one of the same kind; Return in an empty paragraph makes it action.
class ScriptPage : public QTextEdit
{
    Q_OBJECT

public:
    /// An empty page, for action.
    ScriptPage();

    /// The names of the kinds for people.
    static QStringList kindNames();

    /// The index in kindNames() of the kind of the paragraph under the cursor, or -1.
    int kind() const;

    /// Gives the selected paragraphs, or the one under the cursor, the kind of this index in
    /// kindNames(). One step of undo. A page break has no text but its own: a paragraph with text
    /// becomes action instead.
    void setKind(int index);

    /// Replaces the script by the one in the Fountain \a text. One step of undo.
    void setScript(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    void goThroughKinds(int step);
    void goOn(bool toSameKind);
    void giveKind();
    void takeFont();
};

} // namespace Host

#endif
