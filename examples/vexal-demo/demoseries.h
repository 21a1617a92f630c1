// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

#include <QtQml/qqmlregistration.h>

// A long synthetic signal for the demo. Baseline: a slowly drifting baseline
// with noise and rare narrow peaks, so that zooming out shows what the
// decimator keeps. Chirp: a noisy sine swinging around 0 whose frequency
// rises along the series, so that the view needs negative values.
class DemoSeries : public Filter1D
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int count READ count WRITE setCount NOTIFY countChanged)
    Q_PROPERTY(Shape shape READ shape WRITE setShape NOTIFY shapeChanged)

public:
    enum Shape { Baseline, Chirp };
    Q_ENUM(Shape)

    explicit DemoSeries(QObject *parent = nullptr);

    int count() const { return m_count; }
    // Generates count samples and hands them down the tree.
    void setCount(int count);
    Shape shape() const { return m_shape; }
    // Generates the samples again when there are any.
    void setShape(Shape shape);

signals:
    void countChanged();
    void shapeChanged();

private:
    void generate();

    int m_count = 0;            // samples generated, 0
    Shape m_shape = Baseline;   // kind of signal generated, Baseline
};
