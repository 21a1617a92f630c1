// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

// Loads a text file of numbers, one per line, and publishes them as its data
// over an area of width count x binWidth.
class VEXAL_EXPORT SCSVReader : public Filter1D
{
    Q_OBJECT
    Q_PROPERTY(QString file READ file WRITE setFile NOTIFY fileChanged)
    Q_PROPERTY(double binWidth READ binWidth WRITE setBinWidth NOTIFY binWidthChanged)

public:
    explicit SCSVReader(QObject *parent = nullptr);
    ~SCSVReader() override;

    QString file() const { return m_file; }
    // Reads the file when the path changes; an unreadable file keeps the old
    // data and area.
    void setFile(const QString &path);
    double binWidth() const { return m_binWidth; }
    // Applies to the next file read; the area is not changed.
    void setBinWidth(double width);

signals:
    void fileChanged();
    void binWidthChanged();

private:
    QString m_file;              // path of the file to read, empty
    double m_binWidth = 9.375e-12; // width of one value along x in data units, 9.375e-12
};
