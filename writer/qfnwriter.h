// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef QFNWRITER_H
#define QFNWRITER_H

#include "model/qfnstyle.h"
#include "model/zemfountain_export.h"

#include <QtCore/QString>

class QFnDocument;
class QFnElement;
class QIODevice;

/// Writes a QFnDocument as Fountain text: UTF-8, no byte order mark, line feeds only.
///
/// Each element is written in the fixed form of its type, whatever stands before it. Only type and
/// text are read: no title page, emphasis, centring, scene number or section depth is written. A
/// line end stands at the start of a form, never at its end, and no blank line is added; a blank
/// line in the file comes from an element with no text. Some forms have no line end (dialogue,
/// parentheticals, notes, sections, synopses, transitions) and go on in the line before. So what is
/// written reads back as the same elements only if empty elements stand in the right places.
///
/// Owns neither the device nor the document. May serve several calls, from one thread at a time.
class ZEMFOUNTAIN_EXPORT QFnWriter
{
public:
    /// A writer for \a output, which may be null when only writeFile() will be used.
    explicit QFnWriter(QIODevice *output);

    /// Writes \a source to device, which must be set and open for writing.
    ///
    /// False, with nothing written, when \a source is null. A write that fails, on a full disk
    /// for instance, is not noticed: the caller looks at the device.
    bool write(const QFnDocument *source);

    /// Writes \a source into the file at \a path, whose old contents are lost.
    ///
    /// False when the file can't be opened, with the reason in errorString, and when \a source is
    /// null, which leaves the file empty. A write that fails later is not noticed: a caller to whom
    /// it matters uses write() on a device that it checks. Once the file was opened, device is null
    /// afterwards; before that it is left alone.
    bool writeFile(const QString &path, const QFnDocument *source);

    /// The walk over the elements of document, the step of write() that writes. False when document
    /// is null; else device must be set and open for writing. Marks that are still open behind the
    /// last element stay open.
    bool writeDocument();

    /// Writes the text of \a element, in upper case, behind the marks that its style opens and
    /// style has not open yet. Marks that end here are not closed but forgotten. \a element must
    /// not be null, and device must be set and open. The walk over a document does not use this.
    void writeElementText(const QFnElement *element);

    /// Closes the marks that style has open and puts style back to the default. Unless it is the
    /// default already, device must be set and open.
    void finalizeLastElementStyle();

    QIODevice *device;           ///< Where the text goes. Not owned.
    const QFnDocument *document; ///< What is being written. Not owned; null but during write().
    QFnStyle style;              ///< The style of the text that writeElementText() last wrote.
    QString errorString; ///< Why a file could not be opened last; success does not clear it.

private:
    void writeForm(const QFnElement &element);
    void writePiece(const QString &text);
    void writeMark(QLatin1String mark);
};

#endif
