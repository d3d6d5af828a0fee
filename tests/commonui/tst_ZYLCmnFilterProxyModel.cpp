// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLCmnFilterProxyModel.h"

#include "ZYLSysLocalizationManager.h"
#include "ZYLSysUnits.h"
#include "ZYLSysValue.h"
#include "ZYLSysVariantFilter.h"

#include <QStandardItemModel>
#include <QTest>

namespace {

constexpr int kValueRole = 256;
constexpr double kTextTolerance = 2.220446049250313e-16;
constexpr double kNumberTolerance = 1e-07;

enum Column { NumberColumn, TextColumn, TowsColumn, LengthColumn, ColumnCount };

struct Row {
    double number;
    const char *text;
    const char *tows;
    double lengthMm;
};

// A small table as the info panel builds it: numbers, names, tow lists, and lengths shown as
// text with the quantity itself under role 256.
const Row kRows[] = {
    {10.0, "Alpha", "1-4", 25.4},
    {20.5, "beta", "2,5", 10.0},
    {-3.0, "Gamma ray", "", 100.0},
    {20.50000005, "delta", "1-8", 0.0},
    {1000.0, "alphabet", "3", 50.8},
};

QStandardItemModel *MakeModel(QObject *parent)
{
    auto *model = new QStandardItemModel(0, ColumnCount, parent);
    for (const Row &row : kRows) {
        QList<QStandardItem *> items;
        auto *number = new QStandardItem;
        number->setData(row.number, Qt::DisplayRole);
        number->setData(-row.number, kValueRole);
        items << number << new QStandardItem(QString::fromUtf8(row.text))
              << new QStandardItem(QString::fromUtf8(row.tows));
        const ZYLSysValue length(ZYLSysValue::Length, row.lengthMm);
        auto *lengthItem = new QStandardItem(length.ToString());
        lengthItem->setData(QVariant::fromValue(length), kValueRole);
        items << lengthItem;
        model->appendRow(items);
    }
    return model;
}

QList<int> SourceRows(const QSortFilterProxyModel &proxy)
{
    QList<int> rows;
    for (int row = 0; row < proxy.rowCount(); ++row)
        rows << proxy.mapToSource(proxy.index(row, 0)).row();
    return rows;
}

// Names in several scripts, with letters whose case forms differ in more than ASCII ways:
// accented capitals, the Greek final sigma, the German sharp s (no single-letter capital),
// the Turkish dotted capital I, a letter outside the basic plane (Deseret), and numbers.
const char *const kNames[] = {
    "École", "ÉCOLE normale", "straße", "STRASSE", "ΣΊΣΥΦΟΣ", "σίσυφος", "Ως", "İstanbul", "istanbul",
    "\xF0\x90\x90\x80 deseret", "\xF0\x90\x90\xA8 DESERET", "", "Alpha 12", "alpha 120", "zeta", "Ärger", "ärger",
};

QStandardItemModel *MakeNamesModel(QObject *parent)
{
    auto *model = new QStandardItemModel(0, 2, parent);
    for (const char *name : kNames) {
        auto *number = new QStandardItem;
        number->setData(QString::fromUtf8(name).size(), Qt::DisplayRole);
        model->appendRow({new QStandardItem(QString::fromUtf8(name)), number});
    }
    return model;
}

// The rows the filter itself accepts, cell by cell: what the proxy must keep.
QList<int> AcceptedRows(const QAbstractItemModel &model, int column, const ZYLSysVariantFilter &filter)
{
    QList<int> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        if (filter.Accepts(model.index(row, column).data()))
            rows << row;
    return rows;
}

} // namespace

class tst_ZYLCmnFilterProxyModel : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void comparisons_data();
    void comparisons();
    void changingColumnOrRoleRefilters();
    void foldedTextsAgreeWithTheFilter_data();
    void foldedTextsAgreeWithTheFilter();
    void sourceChangesReachTheFilter();
};

void tst_ZYLCmnFilterProxyModel::initTestCase()
{
    ZYLSysLocalizationManager::GetManager()->SetLocale(QLocale::c());
    ZYLSysUnits::GetInstance()->RevertToDefaults();
}

void tst_ZYLCmnFilterProxyModel::comparisons_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("base");
    QTest::addColumn<int>("comparison");
    QTest::addColumn<int>("type");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<QList<int>>("rows");
    const int text = ZYLSysVariantFilter::Text, other = ZYLSysVariantFilter::Other, d = Qt::DisplayRole;
    const auto row = [](const char *name, int column, int role, const QVariant &base, int comparison, int type,
                        double tolerance, const QList<int> &rows) {
        QTest::newRow(name) << column << role << base << comparison << type << tolerance << rows;
    };
    // Text columns, case-insensitive.
    row("begins with", TextColumn, d, "alpha", 0, text, kTextTolerance, {0, 4});
    row("ends with", TextColumn, d, "A", 1, text, kTextTolerance, {0, 1, 3});
    row("contains", TextColumn, d, "ph", 2, text, kTextTolerance, {0, 4});
    row("does not contain", TextColumn, d, "ph", 3, text, kTextTolerance, {1, 2, 3});
    row("text equal", TextColumn, d, "BETA", 4, text, kTextTolerance, {1});
    row("text not equal", TextColumn, d, "beta", 5, text, kTextTolerance, {0, 2, 3, 4});
    row("text greater", TextColumn, d, "beta", 6, text, kTextTolerance, {2, 3});
    row("text less or equal", TextColumn, d, "beta", 9, text, kTextTolerance, {0, 1, 4});
    // Any column: "25.400 mm", "20.5" and "2,5", "20.50000005", "50.800 mm".
    row("any column", -1, d, "5", 2, text, kTextTolerance, {0, 1, 3, 4});
    // A key column past the end filters nothing out.
    row("column past the end", ColumnCount, d, "zzz", 4, text, kTextTolerance, {0, 1, 2, 3, 4});
    // Numbers, the base typed as text as the panel hands it over, with the number tolerance.
    row("equal within tolerance", NumberColumn, d, "20.5", 4, other, kNumberTolerance, {1, 3});
    row("not equal", NumberColumn, d, "20.5", 5, other, kNumberTolerance, {0, 2, 4});
    row("greater", NumberColumn, d, "20.5", 6, other, kNumberTolerance, {4});
    row("greater or equal", NumberColumn, d, "20.5", 7, other, kNumberTolerance, {1, 3, 4});
    row("less", NumberColumn, d, 20.5, 8, other, kNumberTolerance, {0, 2});
    row("less or equal", NumberColumn, d, 10, 9, other, kNumberTolerance, {0, 2});
    row("role 256", NumberColumn, kValueRole, 0.0, 6, other, kNumberTolerance, {2});
    // Tow lists compared as text by the default function.
    row("tows contain", TowsColumn, d, "1-", 2, other, 0.0, {0, 3});
    row("tows equal", TowsColumn, d, "2,5", 4, other, 0.0, {1});
    // Quantities: shown text, and the value under role 256; plain numbers are in the display unit.
    row("shown length equal", LengthColumn, d, "1 in", 4, other, kNumberTolerance, {0});
    row("length greater", LengthColumn, kValueRole, 25.4, 6, other, kNumberTolerance, {2, 4});
    row("length quantity base", LengthColumn, kValueRole, QVariant::fromValue(ZYLSysValue(ZYLSysValue::Length, 10.0)),
        9, other, kNumberTolerance, {1, 3});
}

void tst_ZYLCmnFilterProxyModel::comparisons()
{
    QFETCH(int, column);
    QFETCH(int, role);
    QFETCH(QVariant, base);
    QFETCH(int, comparison);
    QFETCH(int, type);
    QFETCH(double, tolerance);
    QFETCH(QList<int>, rows);
    ZYLCmnFilterProxyModel proxy(nullptr);
    proxy.setSourceModel(MakeModel(&proxy));
    proxy.setFilterKeyColumn(column);
    proxy.setFilterRole(role);
    proxy.SetFilterFunction(&ZYLCmnFilterProxyModel::DefaultVariantFilterFunction);
    proxy.SetVariantFilter(ZYLSysVariantFilter(base, ZYLSysVariantFilter::ComparisonType(comparison), tolerance,
                                               ZYLSysVariantFilter::FilterType(type)));
    QCOMPARE(SourceRows(proxy), rows);
}

void tst_ZYLCmnFilterProxyModel::changingColumnOrRoleRefilters()
{
    ZYLCmnFilterProxyModel proxy(nullptr);
    proxy.setSourceModel(MakeModel(&proxy));
    proxy.setFilterKeyColumn(TextColumn);
    proxy.SetVariantFilter(ZYLSysVariantFilter::CreateFilter("-", ZYLSysVariantFilter::Text,
                                                             ZYLSysVariantFilter::Contains, kTextTolerance));
    QCOMPARE(SourceRows(proxy), QList<int>{});
    proxy.setFilterKeyColumn(TowsColumn);
    QCOMPARE(SourceRows(proxy), (QList<int>{0, 3}));
    proxy.setFilterKeyColumn(NumberColumn);
    QCOMPARE(SourceRows(proxy), QList<int>{2});
    proxy.setFilterRole(kValueRole);
    QCOMPARE(SourceRows(proxy), (QList<int>{0, 1, 3, 4}));
    // Through the base class the change takes the slower path to the same rows.
    QSortFilterProxyModel &base = proxy;
    base.setFilterRole(Qt::DisplayRole);
    QCOMPARE(SourceRows(proxy), QList<int>{2});
}

void tst_ZYLCmnFilterProxyModel::foldedTextsAgreeWithTheFilter_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("defaultFunctionSet");
    const int text = ZYLSysVariantFilter::Text;
    QTest::newRow("empty base") << QString() << 0 << text << false;
}

void tst_ZYLCmnFilterProxyModel::foldedTextsAgreeWithTheFilter()
{
    QFETCH(QString, base);
    QFETCH(int, column);
    QFETCH(int, type);
    QFETCH(bool, defaultFunctionSet);
    ZYLCmnFilterProxyModel proxy(nullptr);
    QStandardItemModel *model = MakeNamesModel(&proxy);
    proxy.setSourceModel(model);
    proxy.setFilterKeyColumn(column);
    if (defaultFunctionSet)
        proxy.SetFilterFunction(&ZYLCmnFilterProxyModel::DefaultVariantFilterFunction);
    // Every comparison, each right after another so that the kept column is reused.
    const int last = type == ZYLSysVariantFilter::Text ? ZYLSysVariantFilter::LessOrEqual
                                                       : ZYLSysVariantFilter::DoesNotContain;
    for (int comparison = 0; comparison <= last; ++comparison) {
        const ZYLSysVariantFilter filter(base, ZYLSysVariantFilter::ComparisonType(comparison), kTextTolerance,
                                         ZYLSysVariantFilter::FilterType(type));
        proxy.SetVariantFilter(filter);
        QCOMPARE(SourceRows(proxy), AcceptedRows(*model, column, filter));
    }
}

void tst_ZYLCmnFilterProxyModel::sourceChangesReachTheFilter()
{
    ZYLCmnFilterProxyModel proxy(nullptr);
    QStandardItemModel *model = MakeNamesModel(&proxy);
    proxy.setSourceModel(model);
    proxy.setFilterKeyColumn(0);
    const auto filter = [](const char *base) {
        return ZYLSysVariantFilter::CreateFilter(QString::fromUtf8(base), ZYLSysVariantFilter::Text,
                                                 ZYLSysVariantFilter::Contains, kTextTolerance);
    };
    proxy.SetVariantFilter(filter("zeta"));
    QCOMPARE(SourceRows(proxy), QList<int>{14});

    // An edited cell is filtered by its new text, now and by the next filter.
    model->item(2, 0)->setText(QStringLiteral("ZETA prime"));
    QCOMPARE(SourceRows(proxy), (QList<int>{2, 14}));
    proxy.SetVariantFilter(filter("ZETA"));
    QCOMPARE(SourceRows(proxy), (QList<int>{2, 14}));
    // An edit of another column or role keeps the texts read.
    model->item(2, 1)->setText(QStringLiteral("zeta"));
    model->item(3, 0)->setData(QStringLiteral("zeta"), Qt::ToolTipRole);
    proxy.SetVariantFilter(filter("zeta"));
    QCOMPARE(SourceRows(proxy), (QList<int>{2, 14}));

    // Rows inserted, removed and taken elsewhere shift the rows the texts belong to.
    model->insertRow(0, new QStandardItem(QStringLiteral("Zetas")));
    QCOMPARE(SourceRows(proxy), (QList<int>{0, 3, 15}));
    proxy.SetVariantFilter(filter("zet"));
    QCOMPARE(SourceRows(proxy), (QList<int>{0, 3, 15}));
    model->removeRows(1, 3);
    proxy.SetVariantFilter(filter("zeta"));
    QCOMPARE(SourceRows(proxy), (QList<int>{0, 12}));
    model->insertRow(1, model->takeRow(12));
    proxy.SetVariantFilter(filter("zeta"));
    QCOMPARE(SourceRows(proxy), (QList<int>{0, 1}));

    // Another role, another column and another model are read afresh.
    model->item(5, 0)->setData(QStringLiteral("zeta"), Qt::ToolTipRole);
    proxy.setFilterRole(Qt::ToolTipRole);
    // With the tool tip given to "STRASSE" above, now at row 2.
    QCOMPARE(SourceRows(proxy), (QList<int>{2, 5}));
    proxy.setFilterRole(Qt::DisplayRole);
    proxy.setFilterKeyColumn(1);
    proxy.SetVariantFilter(filter("4"));
    QCOMPARE(SourceRows(proxy), AcceptedRows(*model, 1, filter("4")));
    QStandardItemModel other(0, 2);
    other.appendRow({new QStandardItem(QStringLiteral("x")), new QStandardItem(QStringLiteral("44"))});
    proxy.setSourceModel(&other);
    QCOMPARE(SourceRows(proxy), QList<int>{0});
    model->setItem(0, 1, new QStandardItem(QStringLiteral("4")));
    proxy.setSourceModel(model);
    QCOMPARE(SourceRows(proxy), AcceptedRows(*model, 1, filter("4")));
    proxy.setSourceModel(nullptr);
}

QTEST_MAIN(tst_ZYLCmnFilterProxyModel)
#include "tst_ZYLCmnFilterProxyModel.moc"
