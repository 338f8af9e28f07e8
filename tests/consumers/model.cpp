// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include <bridge/ZemFountain.h>
#include <model/qfndocument.h>
#include <model/qfnelement.h>
#include <parser/qfnfastparser.h>
#include <writer/qfnwriter.h>

#include <QFile>
#include <QGuiApplication>
#include <QTextDocument>
#include <QTextStream>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    const QList<ZEMScriptElement> kinds;
    QTextDocument page;

    // What follows is the first example of README.md.
    QFnFastParser parser(nullptr);
    parser.parse("The lamp is lit.\n\nMARA\nIt burns.\n");

    QTextStream out(stdout);
    for (const QFnElement *element : parser.document->elements)
        out << QFnElement::toString(element->type) << ": " << element->text << "\n";

    ZEMFountainDocumentRenderer renderer; // the same as rich text, a block for each element
    renderer.scriptElements = kinds;
    renderer.render(*parser.document, &page);

    out << page.toPlainText() << "\n";
    out.flush();
    QFile file;
    file.open(stdout, QIODevice::WriteOnly);
    return QFnWriter(&file).write(parser.document) ? 0 : 1;
}
