// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "host/exporting.h"

#include "host/reading.h"
#include "host/records.h"
#include "model/literals_p.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextFragment>

namespace {

using Host::Form;
using Host::Paragraph;
using Host::Stretch;
using Zem::operator""_L1;

void append(const Stretch &stretch, QVector<Stretch> *stretches)
{
    if (stretch.text.isEmpty())
        return;
    if (!stretches->isEmpty() && stretches->last().looksLike(stretch))
        stretches->last().text += stretch.text;
    else
        stretches->append(stretch);
}

/// Takes the number of a heading out of its text, if it stands there as custom has it.
void takeSceneNumber(Paragraph *heading)
{
    const QString text = heading->text();
    const auto parts = Host::splitHeading(text);
    const auto behindText = text.size() - parts.first.size();
    if (parts.second.isEmpty() || behindText != parts.second.size() + 3)
        return;
    heading->sceneNumber = parts.second;
    int left = int(parts.first.size());
    for (Stretch &stretch : heading->stretches) {
        stretch.text.truncate(left);
        left -= int(stretch.text.size());
    }
}

/// Whether the kind has no emphasis in a script: its marks are text there.
bool isPlain(QFnElement::Type type)
{
    return type == QFnElement::Character || type == QFnElement::SceneHeading
           || type == QFnElement::SectionHeading || type == QFnElement::Notes
           || type == QFnElement::Boneyard;
}

/// The paragraph of a block, and in \a losesEmphasis whether it has emphasis that its kind cannot
/// have.
Paragraph paragraphOf(const QTextBlock &block, bool *losesEmphasis)
{
    Paragraph paragraph;
    const QFnElement::Type type = Host::typeOf(block);
    paragraph.titlePage = Host::recordOf(block).name == Host::titlePageName();
    if (paragraph.titlePage)
        paragraph.type = QFnElement::General;
    else if (type == QFnElement::PageBreak || (type != QFnElement::Undefined && block.length() > 1))
        paragraph.type = type;
    paragraph.centred = paragraph.type == QFnElement::Action
                        && block.blockFormat().alignment().testFlag(Qt::AlignHCenter);
    if (paragraph.type == QFnElement::SectionHeading)
        paragraph.depth = block.blockFormat().indent() + 1;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        if (paragraph.source.isEmpty())
            paragraph.source = Host::sourceOfAnchor(format.anchorNames());
        Stretch stretch;
        stretch.text = it.fragment().text();
        stretch.bold = format.fontWeight() >= QFont::Bold;
        stretch.italic = format.fontItalic();
        stretch.underline = format.underlineStyle() != QTextCharFormat::NoUnderline;
        if (isPlain(paragraph.type) && !stretch.looksLike(Stretch())) {
            *losesEmphasis = true;
            stretch.bold = stretch.italic = stretch.underline = false;
        }
        append(stretch, &paragraph.stretches);
    }
    if (paragraph.type == QFnElement::SceneHeading)
        takeSceneNumber(&paragraph);
    if (paragraph.type == QFnElement::PageBreak && paragraph.stretches.isEmpty()) {
        paragraph.stretches.append(Stretch());
        paragraph.stretches.last().text = QStringLiteral("===");
    }
    return paragraph;
}

/// Whether \a read is what \a wanted was written for.
bool isSame(const Paragraph &read, const Paragraph &wanted)
{
    QVector<Stretch> looks;
    for (const Stretch &stretch : read.stretches)
        append(stretch, &looks);
    const auto isSameStretch = [](const Stretch &a, const Stretch &b) {
        return a.looksLike(b) && a.text == b.text;
    };
    return read.type == wanted.type && read.titlePage == wanted.titlePage
           && read.centred == wanted.centred && read.sceneNumber == wanted.sceneNumber
           && read.depth == wanted.depth
           && std::equal(looks.begin(), looks.end(), wanted.stretches.begin(),
                         wanted.stretches.end(), isSameStretch);
}

/// A script with a form chosen for each of its paragraphs, and how it reads back.
class Trial
{
public:
    explicit Trial(const QVector<Paragraph> &paragraphs)
        : m_paragraphs(paragraphs)
        , m_forms(paragraphs.size(), Form::Source)
    {}

    /// Writes the script and gives the paragraphs that do not read back as they are.
    QVector<int> write();

    QString text() const { return m_text; }
    Form &form(int paragraph) { return m_forms[paragraph]; }
    /// What is read where the paragraph was written.
    const Paragraph &readAt(int paragraph) const;

private:
    const QVector<Paragraph> &m_paragraphs;
    QVector<Form> m_forms;
    QString m_text;
    QVector<Paragraph> m_read;
    QVector<int> m_ends; ///< of each paragraph, the line behind it
};

const Paragraph &Trial::readAt(int paragraph) const
{
    const auto found =
        std::lower_bound(m_read.begin(), m_read.end(), m_ends.at(paragraph),
                         [](const Paragraph &p, int end) { return p.line + p.lineCount < end; });
    return found == m_read.end() ? m_read.last() : *found;
}

QVector<int> Trial::write()
{
    m_text.clear();
    m_ends.clear();
    int line = 0;
    for (int i = 0; i < m_paragraphs.size(); ++i) {
        const Paragraph *above = i > 0 ? &m_paragraphs.at(i - 1) : nullptr;
        const QString written = Host::written(m_paragraphs.at(i), above, m_forms.at(i));
        line +=
            int(written.count(QLatin1Char('\n'))) + (written.endsWith(QLatin1Char('\n')) ? 0 : 1);
        m_text += written;
        m_ends.append(line);
    }
    m_read = Host::read(m_text);
    QVector<int> wrong;
    for (int i = 0; i < m_paragraphs.size(); ++i) {
        const Paragraph &read = readAt(i);
        if (read.line + read.lineCount != m_ends.at(i) || !isSame(read, m_paragraphs.at(i)))
            wrong.append(i);
    }
    return wrong;
}

QString shown(const Paragraph &paragraph)
{
    constexpr int most = 40;
    QString text = paragraph.text().replace(QChar(QChar::LineSeparator), QLatin1Char(' '));
    if (text.size() > most)
        text = text.left(most) + QLatin1String("...");
    return QStringLiteral("%1 \"%2\"").arg(QFnElement::toString(paragraph.type), text);
}

QString message(int number, const Paragraph &paragraph, const QString &fate)
{
    return QStringLiteral("paragraph %1, %2, %3")
        .arg(QString::number(number), shown(paragraph), fate);
}

void appendParagraphs(const QTextDocument &document, QVector<Paragraph> *paragraphs,
                      QStringList *messages)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        bool losesEmphasis = false;
        paragraphs->append(paragraphOf(block, &losesEmphasis));
        if (losesEmphasis && messages)
            messages->append(message(int(paragraphs->size()), paragraphs->last(),
                                     QStringLiteral("loses its emphasis")));
    }
    // The one block of an empty document is no blank line, unless it says so.
    const bool saysNothing = paragraphs->size() == 1 && paragraphs->first().stretches.isEmpty();
    if (saysNothing && document.begin().userState() != Host::blankLineState)
        paragraphs->clear();
}

QString writtenScript(const QVector<Paragraph> &paragraphs, QStringList *messages)
{
    Trial trial(paragraphs);
    QVector<int> wrong = trial.write();
    // Two other forms to try. A form that makes its own paragraph right may make the next one
    // wrong, so there are some rounds more.
    for (int round = 0; round < 4 && !wrong.isEmpty(); ++round) {
        for (const int i : qAsConst(wrong))
            trial.form(i) = trial.form(i) == Form::Source ? Form::Customary : Form::Forced;
        wrong = trial.write();
    }
    for (const int i : qAsConst(wrong))
        trial.form(i) = Form::Customary;
    if (!wrong.isEmpty())
        wrong = trial.write();
    for (const int i : qAsConst(wrong)) {
        if (messages)
            messages->append(message(i + 1, paragraphs.at(i),
                                     QStringLiteral("has no form in the script and becomes ")
                                         + shown(trial.readAt(i))));
    }
    return trial.text();
}

} // namespace

QString Host::exportScript(const QTextDocument &document, QStringList *messages)
{
    QVector<Paragraph> paragraphs;
    appendParagraphs(document, &paragraphs, messages);
    return writtenScript(paragraphs, messages);
}

QString Host::exportHtml(QString html, QStringList *messages)
{
    // Each block that Qt writes stands on a line of its own, if no table or list is around it.
    constexpr int partSize = 1 << 20;
    const QLatin1String blockStart = "\n<p "_L1;
    const bool hasParts = html.contains("name=\"qrichtext\""_L1) && html.contains(blockStart)
                          && !html.contains("<table"_L1) && !html.contains("<ul"_L1)
                          && !html.contains("<ol"_L1);
    const int head = hasParts ? int(html.indexOf(blockStart)) : 0;
    QVector<Paragraph> paragraphs;
    for (int start = head; start < html.size();) {
        const int next = hasParts ? int(html.indexOf(blockStart, start + partSize)) : -1;
        const int end = next < 0 ? int(html.size()) : next;
        QTextDocument part;
        part.setHtml(QStringView(html).left(head).toString()
                     + QStringView(html).mid(start, end - start).toString());
        appendParagraphs(part, &paragraphs, messages);
        start = end;
    }
    html.clear();
    return writtenScript(paragraphs, messages);
}
