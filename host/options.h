// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef HOST_OPTIONS_H
#define HOST_OPTIONS_H

#include "host/formats.h"

#include <QtCore/QStringList>

namespace Host {

/// What the words of a command line ask for.
struct Options
{
    enum Command { Import, Export, Elements, Edit, Tell };

    Command command = Tell;
    QString answer;    ///< of Tell: what is to be printed
    QStringList paths; ///< as given
    bool plain = false;
    const Format *to = nullptr; ///< Null if the ending of the output tells the format.
    QPageSize::PageSizeId paper = QPageSize::Letter;
};

/// Fills \a options from \a arguments, the name of the program first. False for wrong use, with one
/// line in \a error. Needs the application object.
bool parse(const QStringList &arguments, Options *options, QString *error);

} // namespace Host

#endif
