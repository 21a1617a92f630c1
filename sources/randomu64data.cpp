// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/randomu64data.h>

#include <QtCore/QDebug>
#include <QtCore/QRandomGenerator64>
#include <QtCore/QTimer>

#include <algorithm>
#include <random>

//-----------------------------------------------------------------------------
// [SECTION] Generators
//-----------------------------------------------------------------------------

namespace {

const QString NormalType = QStringLiteral("normal");
const QString WhiteType = QStringLiteral("white");
constexpr int SamplesPerHistogram = 10000;

bool isKnownType(const QString &type)
{
    return type == NormalType || type == WhiteType;
}

// Histogram over bins of 10000 samples of a normal distribution centred on the
// middle bin with sigma bins / 8; samples outside the bins are dropped.
QList<double> normalHistogram(int bins)
{
    QList<double> histogram(bins);
    const double mean = double(bins / 2);
    const double sigma = double(bins / 8);
    if (sigma == 0.0) {
        // Too few bins for a spread: every sample is the mean.
        if (mean < bins)
            histogram[int(mean)] += SamplesPerHistogram;
        return histogram;
    }
    std::mt19937 engine(QRandomGenerator64::global()->generate());
    std::normal_distribution<double> normal(mean, sigma);
    for (int i = 0; i < SamplesPerHistogram; ++i) {
        const double x = normal(engine);
        if (x >= 0.0 && x < bins)
            histogram[int(x)] += 1.0;
    }
    return histogram;
}

// Uniform values on [0, 100) from the top 53 bits of a 64-bit random number.
QList<double> whiteNoise(int bins)
{
    QList<double> noise(bins);
    QRandomGenerator64 *generator = QRandomGenerator64::global();
    for (double &value : noise)
        value = double(generator->generate() >> 11) * 0x1.0p-53 * 100.0;
    return noise;
}

} // namespace

//-----------------------------------------------------------------------------
// [SECTION] Construction and properties
//-----------------------------------------------------------------------------

RandomU64Data::RandomU64Data(QObject *parent)
    : Filter1D(parent)
    , m_timer(new QTimer(this))
{
    m_timer->setInterval(m_interval);
    m_timer->setSingleShot(!m_repeat);
    connect(m_timer, &QTimer::timeout, this, &RandomU64Data::tick);
    connect(this, &Filter1D::areaChanged, this, &RandomU64Data::reset);
    m_timer->start();
}

RandomU64Data::~RandomU64Data() = default;

void RandomU64Data::setType(const QString &type)
{
    if (m_type == type)
        return;
    if (!isKnownType(type)) {
        qWarning().nospace() << "RandomU64Data: unknown type " << type << " refused, keeping " << m_type
                             << " (known: normal, white)";
        return;
    }
    m_type = type;
    reset();
    emit typeChanged();
}

void RandomU64Data::setAppend(bool append)
{
    if (m_append == append)
        return;
    m_append = append;
    emit appendChanged();
}

void RandomU64Data::setInterval(int interval)
{
    // 0 would regenerate on every pass of the event loop and starve the
    // application; a negative interval never fires.
    if (interval < 1) {
        qWarning() << "RandomU64Data: interval" << interval << "ms refused, it must be at least 1; keeping"
                   << m_interval;
        return;
    }
    if (m_interval == interval)
        return;
    m_interval = interval;
    m_timer->setInterval(interval);
    emit intervalChanged();
}

void RandomU64Data::setRepeat(bool repeat)
{
    if (m_repeat == repeat)
        return;
    m_repeat = repeat;
    m_timer->setSingleShot(!repeat);
    emit repeatChanged();
}

void RandomU64Data::setNumBin(int numBin)
{
    if (numBin < 1) {
        qWarning() << "RandomU64Data: numBin" << numBin << "refused, it must be at least 1; keeping" << m_numBin;
        return;
    }
    if (m_numBin == numBin)
        return;
    m_numBin = numBin;
    emit numBinChanged();
}

void RandomU64Data::setRunning(bool running)
{
    if (m_running == running)
        return;
    m_running = running;
    // The flag itself is the interval: true restarts at 1 ms, false at 0 ms.
    m_timer->start(running ? 1 : 0);
    emit runningChanged();
}

//-----------------------------------------------------------------------------
// [SECTION] Generation
//-----------------------------------------------------------------------------

void RandomU64Data::tick()
{
    if (m_append)
        generate(true);
    else
        reset();
}

void RandomU64Data::reset()
{
    generate(false);
}

void RandomU64Data::generate(bool accumulate)
{
    QList<double> values = m_type == NormalType ? normalHistogram(m_numBin) : whiteNoise(m_numBin);
    if (accumulate) {
        // Bins added since the last reset have no previous value: they count as 0.
        const QList<double> &current = data();
        const qsizetype shared = std::min(values.size(), current.size());
        for (qsizetype k = 0; k < shared; ++k)
            values[k] += current.at(k);
    }
    setData(values);
}
