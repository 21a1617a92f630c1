// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/scsvreader.h>

#include "core/numeric_p.h"

#include <QtCore/QFile>

namespace {

constexpr qint64 BlockSize = 1 << 20;

// A line's number as QString::toDouble reads it: surrounding white space
// ignored, 0.0 when the line is not a number. Well-formed numbers are parsed
// in place; every other line (text, other spellings of NaN and infinity,
// overflow, non-ASCII white space, a byte order mark) goes through QString.
double lineValue(QByteArrayView line)
{
    // Carriage returns are dropped wherever they stand, as a text-mode read
    // drops them.
    if (line.contains('\r')) {
        QByteArray text = line.toByteArray();
        text.replace("\r", "");
        return lineValue(text);
    }
    bool ok = false;
    const double value = line.toDouble(&ok);
    return ok ? value : QString::fromUtf8(line).toDouble();
}

// Reads every line of the file in large blocks, so that neither the time nor
// the memory per line depends on the file's size.
QList<double> readLines(QFile &file)
{
    QList<double> values;
    QByteArray pending; // the start of a line that a block boundary cut
    while (!file.atEnd()) {
        const QByteArray block = file.read(BlockSize);
        if (block.isEmpty())
            break;
        QByteArrayView rest(block);
        for (qsizetype eol = rest.indexOf('\n'); eol >= 0; eol = rest.indexOf('\n')) {
            const QByteArrayView line = rest.first(eol);
            if (pending.isEmpty()) {
                values.append(lineValue(line));
            } else {
                pending.append(line);
                values.append(lineValue(pending));
                pending.clear();
            }
            rest = rest.sliced(eol + 1);
        }
        pending.append(rest);
    }
    // A last line without a line break counts, even one of carriage returns only.
    if (!pending.isEmpty())
        values.append(lineValue(pending));
    return values;
}

} // namespace

SCSVReader::SCSVReader(QObject *parent)
    : Filter1D(parent)
{
}

SCSVReader::~SCSVReader() = default;

void SCSVReader::setFile(const QString &path)
{
    if (m_file == path)
        return;
    m_file = path;
    emit fileChanged();
    QFile file(path);
    // Read raw: text mode would hide a last line made of carriage returns only,
    // which a line-by-line read still counts.
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QList<double> values = readLines(file);
    setArea(QRectF(0.0, 0.0, double(values.size()) * m_binWidth, 0.0));
    setData(values);
}

void SCSVReader::setBinWidth(double width)
{
    if (Vexal::fuzzyEqual(m_binWidth, width))
        return;
    m_binWidth = width;
    emit binWidthChanged();
}
