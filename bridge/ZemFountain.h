// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ZEMFOUNTAIN_H
#define ZEMFOUNTAIN_H

#include "base/ZEMScriptElement.h"
#include "model/zemfountain_export.h"

#include <QtCore/QList>

class QFnDocument;
class QString;
class QTextDocument;

/// Adds a QFnDocument to the rich text of a QTextDocument. A plain value with no state of its own.
class ZEMFOUNTAIN_EXPORT ZEMFountainDocumentRenderer
{
public:
    /// Adds \a source behind what \a document holds, which is never cleared. False when \a document
    /// is null, else true.
    ///
    /// The entries of the title page come first, in no particular order and one right behind the
    /// other, as key, ":" and value, with an empty block behind the last. Then each element gives a
    /// block of its own, a stretch with emphasis too; line ends inside its text start further
    /// blocks. A block has the formats of the element's style with those of the record of its type
    /// merged over them. Parentheticals get their parentheses back, and no other mark returns:
    /// scene numbers and section depths do not reach the rich text.
    ///
    /// The insertions are separate edits. A caller that wants them undone in one step opens an edit
    /// block around the call, which also makes it faster.
    bool render(const QFnDocument &source, QTextDocument *document);

    /// The kinds of paragraph of the application, looked up by QFnElement::toString() of a type:
    /// "Scene Heading" and "Section Heading" have a blank here, and none on the way back, so that
    /// each of the two needs two records with equal formats, the one without the blank first in the
    /// list. Only read. Empty: no formats are merged.
    QList<ZEMScriptElement> scriptElements;
};

/// Fountain text to and from rich text, whose blocks belong to kinds of paragraph.
///
/// The two roads are no mirror images: what parseText() imported and writeFile() exported does not
/// read back as the same elements, unless the application lays out empty elements in between, one
/// in front of each element with text, two in front of a section, synopsis, transition or note, and
/// two at the end. Calls keep no state and run on the caller's thread.
namespace ZemFountain {

/// Parses the Fountain \a text and adds it to \a document, as ZEMFountainDocumentRenderer::render()
/// does with the records in \a scriptElements.
///
/// Every text parses. False only when \a document is null. \a scriptElements is read only and may
/// be null, which acts as an empty list. \a error is never touched and may be null.
ZEMFOUNTAIN_EXPORT bool parseText(const QString &text, QTextDocument *document,
                                  QList<ZEMScriptElement> *scriptElements, QString *error);

/// Fills \a target with the elements of \a document: one for each fragment of a block, one
/// Undefined element with no text for each empty block. Gives true always.
///
/// What \a target held is cleared; it must not be null and owns the elements. The type comes from
/// the record in \a scriptElements that the block belongs to, by its name ("SceneHeading" and
/// "SectionHeading" have no blank here), and is Undefined without one. The style is that of the
/// fragment, what a record merged in included. Nothing marks where a block ends. The title page of
/// \a target stays empty. \a error is never touched and may be null.
ZEMFOUNTAIN_EXPORT bool toFountainDocument(const QTextDocument &document,
                                           const QList<ZEMScriptElement> &scriptElements,
                                           QFnDocument *target, QString *error);

/// Writes \a document into the file at \a path as Fountain text, in the forms of QFnWriter, which
/// has neither emphasis nor blank lines of its own.
///
/// False when the file can't be opened. \a error may be null; otherwise it receives the reason, and
/// on success an empty string. A write that fails on the open file is not noticed: to save safely,
/// take the two steps of this operation, toFountainDocument() and QFnWriter::write(), into a buffer
/// and give its bytes to a QSaveFile.
ZEMFOUNTAIN_EXPORT bool writeFile(const QString &path, const QTextDocument &document,
                                  const QList<ZEMScriptElement> &scriptElements, QString *error);

} // namespace ZemFountain

#endif
