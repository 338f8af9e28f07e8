// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef SHAPES_H
#define SHAPES_H

#include <QtCore/QString>

/// What nobody writes but somebody pastes: one piece, repeated.
struct Shape
{
    const char *name;
    const char *before, *piece; ///< in UTF-8

    /// A text with \a count pieces.
    QString text(int count) const
    {
        return QString::fromUtf8(before) + QString::fromUtf8(piece).repeated(count);
    }
};

// clang-format off
constexpr Shape shapes[] = {
    {"open boneyards", "", "/*"},           {"boneyards", "", "/**/"},
    {"open notes", "", "[["},               {"closed notes", "", "]]"},
    {"notes", "", "[[x]]"},                 {"notes and text", "", "[[x]] y"},
    {"hashes", "", "#"},                    {"hashes in a heading", "\n.A", "#a"},
    {"stars", "", "*"},                     {"double stars", "", "**"},
    {"underscores", "", "_"},               {"marks of all kinds", "", "*_**"},
    {"starred letters", "", "*a"},          {"starred letters in action", "a b", "*a"},
    {"equals signs", "", "="},              {"page breaks", "", "===\n"},
    {"page breaks in text", "", "a==="},    {"dots", "", "."},
    {"exclamation marks", "", "!"},         {"centred lines", "", ">a<\n"},
    {"opening angles", "", ">"},            {"closing angles", "", "<"},
    {"opening brackets", "", "("},          {"closing brackets", "", ")"},
    {"blanks", "", " "},                    {"blanks in action", "a", " "},
    {"tabs", "", "\t"},                     {"tabs in action", "a", "\t"},
    {"line feeds", "", "\n"},               {"line feeds in action", "a", "\n"},
    {"carriage returns", "", "\r"},         {"headings", "", "INT. A #1#\n\n"},
    {"keys in a value", "", "TITLE:"},      {"entries", "", "TITLE:\n"},
    {"keys as a word", "", "TITLE"},        {"keys alone", "", "TITLE\n"},
    {"drafts as a word", "", "Draft"},      {"drafts alone", "", "Draft\n"},
    {"lines of action", "", "a\n"},         {"lines below action", "a b\n", "a\n"},
    {"paragraphs", "", "a\n\n"},            {"lines of dialogue", "A\n", "A\n"},
    {"speeches", "", "A\nB\n\n"},           {"one word", "", "a"},
    {"one line", "", "word "},              {"capitals beyond ASCII", "", "\u00c4 "},
    {"parentheticals", "A\n", "(a)"},       {"empty parentheticals", "A\n", "()"},
};
// clang-format on

#endif
