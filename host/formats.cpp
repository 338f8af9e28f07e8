// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/formats.h"

#include "bridge/ZemFountain.h"
#include "host/pdf.h"
#include "host/records.h"
#include "host/richtext.h"
#include "host/titlepage.h"
#include "model/literals_p.h"

#include <QtCore/QBuffer>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentWriter>

#include <algorithm>
#include <iterator>

namespace {

using Zem::operator""_L1;

QString titleOf(const Host::Work &work, const QVector<Host::Paragraph> &script)
{
    const QString title = Host::titleOf(script);
    return title.isEmpty() ? work.name : title;
}

void fill(QTextDocument *document, const Host::Work &work)
{
    QList<ZEMScriptElement> records = Host::records();
    if (work.plain)
        ZemFountain::parseText(work.text, document, &records, nullptr);
    else
        Host::importScript(work.text, document);
}

QByteArray makeHtml(const Host::Work &work, QString *)
{
    QTextDocument document;
    fill(&document, work);
    // Qt writes the title as it stands.
    document.setMetaInformation(QTextDocument::DocumentTitle,
                                titleOf(work, Host::read(work.text)).toHtmlEscaped());
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return document.toHtml("utf-8").toUtf8();
#else
    return document.toHtml().toUtf8();
#endif
}

/// The ODF writer names a face for each text, its own where the text has none.
QByteArray makeOdt(const Host::Work &work, QString *)
{
    QTextDocument document;
    fill(&document, work);
    QTextCharFormat face;
    face.setFontFamilies({QStringLiteral("Courier New")});
    face.setProperty(QTextFormat::FontFamily, QStringLiteral("Courier New")); // Qt 5 reads this
    face.setFontPointSize(document.defaultFont().pointSizeF());
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(face);
    QBuffer buffer;
    QTextDocumentWriter(&buffer, "ODF").write(&document);
    return buffer.data();
}

QByteArray makePdf(const Host::Work &work, QString *problem)
{
    const QVector<Host::Paragraph> script = Host::read(work.text);
    return Host::toPdf(Host::layOut(script), titleOf(work, script), work.paper, problem);
}

QByteArray makeTxt(const Host::Work &work, QString *)
{
    return Host::toPlainPages(Host::layOut(Host::read(work.text)));
}

constexpr Host::Format formats[] = {
    {"html"_L1, false, makeHtml},
    {"odt"_L1, false, makeOdt},
    {"pdf"_L1, true, makePdf},
    {"txt"_L1, true, makeTxt},
};

} // namespace

const Host::Format *Host::formatOf(const QString &name)
{
    const auto format = std::find_if(std::begin(formats), std::end(formats), [&](const Format &f) {
        return name.compare(f.name, Qt::CaseInsensitive) == 0;
    });
    return format == std::end(formats) ? nullptr : format;
}

QString Host::formatNames()
{
    QStringList names;
    for (const Format &format : formats)
        names.append(format.name);
    return names.join(", "_L1);
}
