// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ZEMFOUNTAIN_EXPORT_H
#define ZEMFOUNTAIN_EXPORT_H

#include <QtCore/qglobal.h>

/// Marks a class or operation as part of the surface of libZemFountain. Everything else is hidden.
#if defined(ZEMFOUNTAIN_BUILD)
#define ZEMFOUNTAIN_EXPORT Q_DECL_EXPORT
#else
#define ZEMFOUNTAIN_EXPORT Q_DECL_IMPORT
#endif

#endif
