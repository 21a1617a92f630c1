// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

#include <QtCore/QStringList>

// A Filter1D that logs, into a list shared with other probes, every id, area
// and data call it receives, and opens the protected helpers to the tests.
class FilterProbe : public Filter1D
{
    Q_OBJECT

public:
    explicit FilterProbe(const QString &name, QStringList *log, QObject *parent = nullptr)
        : Filter1D(parent), m_name(name), m_log(log)
    {
    }

    void setData(const QList<double> &input) override
    {
        m_log->append(m_name + QStringLiteral(".data"));
        Filter1D::setData(input);
    }
    void setArea(const QRectF &r) override
    {
        m_log->append(m_name + QStringLiteral(".area"));
        Filter1D::setArea(r);
    }
    void setDataID(const QString &id) override
    {
        m_log->append(m_name + QStringLiteral(".id"));
        Filter1D::setDataID(id);
    }

    using Filter1D::originalData;
    using Filter1D::size2D;

private:
    QString m_name;     // prefix of this probe's log entries
    QStringList *m_log; // shared call log; not owned
};
