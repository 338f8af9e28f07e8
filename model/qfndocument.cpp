// SPDX-FileCopyrightText: 2026 The ZemFountain authors
// SPDX-License-Identifier: MIT

#include "model/qfndocument.h"

#include "model/qfnelement.h"

#include <QtCore/QtAlgorithms>

QFnDocument::QFnDocument(QObject *parent)
    : QObject(parent)
{}

QFnDocument::~QFnDocument()
{
    clearContents();
}

void QFnDocument::clear()
{
    titlePage.clear();
    clearContents();
}

void QFnDocument::clearContents()
{
    qDeleteAll(elements);
    elements.clear();
}
