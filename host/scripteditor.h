// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_SCRIPTEDITOR_H
#define HOST_SCRIPTEDITOR_H

#include <QtCore/QStringListModel>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QPlainTextEdit>

namespace Host {

/// The Fountain text of the rich text \a html, null if no paragraph of it is one of a script. What
/// the script cannot say is added to \a messages, a line for each paragraph.
QString fountainFrom(QString html, QStringList *messages);

/// The text of a script, with the commands of a writer and offers to complete a line.
///
/// Rich text of a script that is pasted or dropped comes in as Fountain. Files that are dropped are
/// left to the window.
class ScriptEditor : public QPlainTextEdit
{
    Q_OBJECT

public:
    ScriptEditor();

    /// The text as it is, LF at the end of each line.
    QString text() const;

    /// What is offered on a line of its own in capitals, best first: \a places where the line
    /// begins with INT or EXT, else \a characters.
    void setOffers(const QStringList &characters, const QStringList &places);

    /// Puts \a mark, "*", "**" or "_", around what is selected in each line, or takes it off where
    /// all lines have it.
    void toggleEmphasis(const QString &mark);

    /// Puts \a opening and \a closing around what is selected, or takes them off.
    void toggleAround(const QString &opening, const QString &closing);

    /// Puts the cursor at the start of the line around \a position, which comes to the upper edge.
    void goTo(int position);

Q_SIGNALS:
    /// Rich text was pasted or dropped; \a messages tell what the script cannot say of it.
    void richTextInserted(const QStringList &messages);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    QMimeData *createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    void offer();

    QStringList m_characters, m_places;
    QStringListModel m_offers;
    QCompleter m_completer;
    int m_declined = -1; ///< The line whose offers were declined.
};

} // namespace Host

#endif
