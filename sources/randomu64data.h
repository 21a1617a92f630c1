// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

class QTimer;

// A demonstration source: on every timer tick it produces numBin values, the
// histogram of normally distributed samples ("normal") or uniform noise on
// [0, 100) ("white"), and adds them to its output (append) or replaces it.
class VEXAL_EXPORT RandomU64Data : public Filter1D
{
    Q_OBJECT
    Q_PROPERTY(QString type READ type WRITE setType NOTIFY typeChanged)
    Q_PROPERTY(bool append READ append WRITE setAppend NOTIFY appendChanged)
    Q_PROPERTY(int interval READ interval WRITE setInterval NOTIFY intervalChanged)
    Q_PROPERTY(bool repeat READ repeat WRITE setRepeat NOTIFY repeatChanged)
    Q_PROPERTY(int numBin READ numBin WRITE setNumBin NOTIFY numBinChanged)
    Q_PROPERTY(bool running READ running WRITE setRunning NOTIFY runningChanged)

public:
    explicit RandomU64Data(QObject *parent = nullptr);
    ~RandomU64Data() override;

    QString type() const { return m_type; }
    // "normal" or "white"; regenerates at once. Other names are refused.
    void setType(const QString &type);
    bool append() const { return m_append; }
    void setAppend(bool append);
    int interval() const { return m_interval; }
    void setInterval(int interval);
    bool repeat() const { return m_repeat; }
    void setRepeat(bool repeat);
    int numBin() const { return m_numBin; }
    // Takes effect at the next regeneration; a negative count is refused.
    void setNumBin(int numBin);
    bool running() const { return m_running; }
    // Restarts the timer with the flag as its interval (1 ms or 0 ms); it never
    // stops the timer.
    void setRunning(bool running);

signals:
    void typeChanged();
    void appendChanged();
    void intervalChanged();
    void repeatChanged();
    void numBinChanged();
    void runningChanged();

private:
    void tick();
    void reset();
    // Publishes fresh values, added to the current output when accumulate is set.
    void generate(bool accumulate);

    QString m_type = QStringLiteral("normal"); // generator kind, "normal"
    bool m_append = true;                      // ticks add to the output instead of replacing it, true
    int m_interval = 2500;                     // timer interval in ms, 2500
    bool m_repeat = true;                      // the timer repeats, true
    bool m_running = true;                     // run flag, true
    int m_numBin = 1024;                       // number of output values, 1024
    QTimer *m_timer = nullptr;                 // drives generation; child of this object
};
