// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#ifndef ZEMBASE_EXPORT_H
#define ZEMBASE_EXPORT_H

#include <QtCore/qglobal.h>

/// Marks a class or operation as part of the surface of libZemBase. Everything else is hidden.
#if defined(ZEMBASE_BUILD)
#define ZEMBASE_EXPORT Q_DECL_EXPORT
#else
#define ZEMBASE_EXPORT Q_DECL_IMPORT
#endif

#endif
