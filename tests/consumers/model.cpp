// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include <model/qfndocument.h>
#include <model/qfnelement.h>
#include <parser/qfnfastparser.h>
#include <writer/qfnwriter.h>

#include <QFile>
#include <QTextStream>

int main()
{
    QFnFastParser parser(nullptr);
    parser.parse("The lamp is lit.\n\nMARA\nIt burns.\n");

    QTextStream out(stdout);
    for (const QFnElement *element : parser.document->elements)
        out << QFnElement::toString(element->type) << ": " << element->text << "\n";
    out.flush();

    QFile file;
    file.open(stdout, QIODevice::WriteOnly);
    return QFnWriter(&file).write(parser.document) ? 0 : 1;
}
