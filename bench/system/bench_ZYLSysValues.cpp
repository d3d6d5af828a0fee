// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Timings of the per-cell work of large tables: filtering cells with ZYLSysVariantFilter and
// formatting / reading values with units. Run: bench_ZYLSysValues [rows]
#include "ZYLBenchArguments.h"

#include "ZYLSysLocalizationManager.h"
#include "ZYLSysValue.h"
#include "ZYLSysVariantFilter.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QVariant>

#include <cstdio>
#include <functional>

namespace {

void Report(const char *what, qsizetype count, const std::function<qsizetype()> &work)
{
    QElapsedTimer timer;
    timer.start();
    const qsizetype result = work();
    const double seconds = timer.nsecsElapsed() * 1e-9;
    std::printf("%-46s %lld: %.3f s, %.2f M/s (result %lld)\n", what, static_cast<long long>(count), seconds,
                count / seconds * 1e-6, static_cast<long long>(result));
}

qsizetype CountAccepted(const ZYLSysVariantFilter &filter, const QList<QVariant> &cells)
{
    qsizetype accepted = 0;
    for (const QVariant &cell : cells)
        accepted += filter.Accepts(cell);
    return accepted;
}

} // namespace

int main(int argc, char **argv)
{
    const qsizetype rows = ZYLBenchReadArguments(argc, argv, {{"ROWS", 1000000}})[0];
    QCoreApplication app(argc, argv);
    QTemporaryDir settings;
    qputenv("ZYL_SETTINGS_DIR", settings.path().toUtf8());

    QList<QVariant> numbers, numberTexts, names, quantities;
    QList<ZYLSysValue> lengths;
    QStringList lengthTexts;
    for (qsizetype i = 0; i < rows; ++i) {
        const double value = (i % 5000) * 0.731;
        numbers.append(value);
        numberTexts.append(QString::number(i % 5000));
        names.append(QStringLiteral("Course %1").arg(i % 500 + 1));
        quantities.append(QVariant::fromValue(ZYLSysValue(ZYLSysValue::Length, value)));
        lengths.append(ZYLSysValue(ZYLSysValue::Length, value));
    }

    const ZYLSysVariantFilter greater(2000.0, ZYLSysVariantFilter::Greater, 1e-7, ZYLSysVariantFilter::Other);
    const ZYLSysVariantFilter contains(QStringLiteral("se 4"), ZYLSysVariantFilter::Contains, 2.2e-16,
                                       ZYLSysVariantFilter::Text);
    Report("filter > on double cells", rows, [&] { return CountAccepted(greater, numbers); });
    Report("filter > on numeric text cells", rows, [&] { return CountAccepted(greater, numberTexts); });
    Report("filter contains on text cells", rows, [&] { return CountAccepted(contains, names); });
    Report("filter > on ZYLSysValue cells (display mm)", rows, [&] { return CountAccepted(greater, quantities); });

    Report("ZYLSysValue::ToString", rows, [&] {
        qsizetype characters = 0;
        for (const ZYLSysValue &value : lengths)
            characters += value.ToString().size();
        return characters;
    });
    lengthTexts.reserve(rows);
    for (const ZYLSysValue &value : lengths)
        lengthTexts.append(value.ToString());
    Report("ZYLSysValue::FromString", rows, [&] {
        ZYLSysValue value(ZYLSysValue::Length, 0.0);
        qsizetype read = 0;
        for (const QString &text : std::as_const(lengthTexts)) {
            value.FromString(text);
            read += value.GetValue() >= 0.0;
        }
        return read;
    });
    return 0;
}
