// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

#include <QtQml/qqmlregistration.h>

// A long synthetic signal for the demo: a slowly drifting baseline with noise
// and rare narrow peaks, so that zooming out shows what the decimator keeps.
class DemoSeries : public Filter1D
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int count READ count WRITE setCount NOTIFY countChanged)

public:
    explicit DemoSeries(QObject *parent = nullptr);

    int count() const { return m_count; }
    // Generates count samples and hands them down the tree.
    void setCount(int count);

signals:
    void countChanged();

private:
    int m_count = 0; // samples generated, 0
};
