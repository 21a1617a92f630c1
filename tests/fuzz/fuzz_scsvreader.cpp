// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Reads arbitrary file contents with the CSV reader and checks that it
// publishes one value per line over an area of count x binWidth.
#include "fuzzapplication.h"

#include <vexal/scsvreader.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>

namespace {

QString fuzzedFilePath()
{
    static QTemporaryDir directory;
    return directory.filePath(QStringLiteral("fuzzed.csv"));
}

// Lines as the reader counts them: every line break ends one, and a last
// line without a break counts too.
qsizetype lineCount(const uint8_t *data, size_t size)
{
    const qsizetype breaks = std::count(data, data + size, uint8_t('\n'));
    return breaks + (size > 0 && data[size - 1] != '\n' ? 1 : 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = fuzzedFilePath();
    {
        QFile file(path);
        FUZZ_CHECK(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        FUZZ_CHECK(file.write(reinterpret_cast<const char *>(data), qint64(size)) == qint64(size));
    }
    SCSVReader reader;
    reader.setFile(path);
    const qsizetype count = reader.data().size();
    FUZZ_CHECK(count == lineCount(data, size));
    FUZZ_CHECK(reader.area().width() == double(count) * reader.binWidth());
    return 0;
}
