// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "guide.h"

#include "bridge/ZemFountain.h"
#include "model/qfndocument.h"
#include "model/qfnelement.h"
#include "writer/qfnwriter.h"

#include <QtCore/QBuffer>
#include <QtCore/QSaveFile>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>

#include <utility>

void mendWeights(QTextDocument *document)
{
    QTextCharFormat normal;
    normal.setFontWeight(QFont::Normal);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextCursor text(block);
        text.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        if (block.charFormat().fontWeight() == 0) {
            text.mergeCharFormat(normal);
            text.mergeBlockCharFormat(normal);
        }
    }
}

void layOut(QFnDocument *script)
{
    const QList<QFnElement *> elements = std::exchange(script->elements, {});
    const auto addEmpty = [script](int count) {
        for (int i = 0; i < count; ++i)
            script->elements.append(new QFnElement);
    };
    for (QFnElement *element : elements) {
        const bool goesOnInLine =
            element->type == QFnElement::SectionHeading || element->type == QFnElement::Synopsis
            || element->type == QFnElement::Transition || element->type == QFnElement::Notes;
        if (element->text.isEmpty()) {
            delete element;
        } else {
            addEmpty(goesOnInLine ? 2 : 1);
            script->elements.append(element);
        }
    }
    addEmpty(2);
}

bool save(const QString &path, const QTextDocument &document,
          const QList<ZEMScriptElement> &paragraphKinds)
{
    QFnDocument model(nullptr);
    ZemFountain::toFountainDocument(document, paragraphKinds, &model, nullptr);
    layOut(&model);
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QFnWriter(&bytes).write(&model);

    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes.data()) == bytes.size()
           && file.flush() && file.commit();
}
