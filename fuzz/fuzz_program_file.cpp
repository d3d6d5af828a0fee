// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Feeds one input to the program file reader. A program it accepts must save, and what it
// saves must load again and save to the same bytes: the reader never accepts what the
// writer cannot keep.
#include "ZYLTPProgramFile.h"

#include <QByteArray>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Parse(bytes);
    if (!loaded.program)
        return 0;
    QString error;
    const QByteArray saved = ZYLTPProgramFile::Serialize(*loaded.program, &error);
    const ZYLTPProgramFile::LoadResult again = ZYLTPProgramFile::Parse(saved);
    const QByteArray resaved = again.program ? ZYLTPProgramFile::Serialize(*again.program) : QByteArray();
    if (saved.isEmpty() || !again.program || resaved != saved) {
        std::fprintf(stderr, "accepted program does not round-trip: %s%s\n", qPrintable(error),
                     qPrintable(again.error));
        std::abort();
    }
    return 0;
}
