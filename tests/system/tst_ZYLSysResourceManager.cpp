// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLSysResourceManager.h"

#include <QFile>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

const QStringList kCatalogue = {
    "collision-table", "tool-path-contextual", "info-detailed", "courses-edit", "laying-points-edit",
    "linking-points-edit", "links-edit", "display-tool-path-course", "tool-path-polyline-view",
    "tool-path-course-and-polyline-view", "courses-hidden", "laying-points-tool-axis",
    "laying-points-tool-laying-axes", "laying-points-all-axes", "laying-pints-hidden", "links-points",
    "links-tool-axis", "links-all-axes", "links-hidden", "linking-points", "linking-points-tool-axes",
    "linking-points-tool-laying-axes", "linking-points-all-axes", "linking-points-hidden", "surface-hidden",
    "ply-boundary-in-edit-tool-path-off", "head-off", "roller-off",
};
const QStringList kPanelImages = {"button-collapse-right", "button-collapse-left", "selection-non-empty", "select"};
const QStringList kThemeIcons = {
    "courses-edit", "courses-reverse", "courses-delete", "courses-break", "all-expand-collapse",
    "nesting-unlink", "courses-link", "courses-chain-link", "courses-unlink-all", "course-ok",
    "course-details", "nesting-link", "nesting-undo", "laying-points-edit", "linking-points-edit",
    "status-ok", "remove-all",
};

int OpaquePixels(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 128;
    return count;
}

} // namespace

class tst_ZYLSysResourceManager : public QObject {
    Q_OBJECT
private slots:
    void imagesAreRealGlyphs_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : kCatalogue + kPanelImages)
            QTest::newRow(qPrintable(name)) << name;
    }

    void imagesAreRealGlyphs()
    {
        QFETCH(QString, name);
        QVERIFY(ZYLSysResourceManager::HasImage(name));
        const QPixmap pixmap = ZYLSysResourceManager::GetImage(name);
        QCOMPARE(pixmap.size(), QSize(24, 24));
        const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
        QVERIFY(image != ZYLSysResourceManager::GetPlaceholderImage().toImage().convertToFormat(QImage::Format_ARGB32));
        // Something is drawn, and not a filled square.
        const int opaque = OpaquePixels(image);
        QVERIFY2(opaque > 12 && opaque < 24 * 24, qPrintable(QString::number(opaque)));
    }

    void everyImageIsItsOwn()
    {
        QSet<QByteArray> seen;
        for (const QString &name : ZYLSysResourceManager::GetImageNames()) {
            const QImage image = ZYLSysResourceManager::GetImage(name, 32).toImage();
            const QByteArray bits(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
            QVERIFY2(!seen.contains(bits), qPrintable(name));
            seen.insert(bits);
        }
        QVERIFY(seen.size() >= kCatalogue.size() + kPanelImages.size());
    }

    void missingNameGivesThePlaceholder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("unknown") << "no-such-icon";
        QTest::newRow("empty") << "";
        QTest::newRow("path") << "../images/select";
    }

    void missingNameGivesThePlaceholder()
    {
        QFETCH(QString, name);
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("No image named"));
        const QPixmap pixmap = ZYLSysResourceManager::GetImage(name);
        QVERIFY(!pixmap.isNull());
        QCOMPARE(pixmap.toImage(), ZYLSysResourceManager::GetPlaceholderImage().toImage());
        QVERIFY(!ZYLSysResourceManager::HasImage(name));
    }

    void themeIconsAreFound_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : kThemeIcons)
            QTest::newRow(qPrintable(name)) << name;
    }

    void themeIconsAreFound()
    {
        QFETCH(QString, name);
        QVERIFY(ZYLSysResourceManager::InstallIconTheme());
        QCOMPARE(QIcon::themeName(), QStringLiteral("zyl"));
        QVERIFY(QIcon::hasThemeIcon(name));
        const QPixmap pixmap = QIcon::fromTheme(name).pixmap(24, 24);
        QVERIFY(!pixmap.isNull());
        QVERIFY(OpaquePixels(pixmap.toImage()) > 12);
    }

    void styleSheetPlaceholders_data()
    {
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<QString>("expected");
        const QString left = QStringLiteral("url(:/zyl/images/button-collapse-left.svg)");
        const QString right = QStringLiteral("url(:/zyl/images/button-collapse-right.svg)");
        QTest::newRow("bare") << "QPushButton:checked { image: @@@checked-image@@@; }"
                              << "QPushButton:checked { image: " + left + "; }";
        QTest::newRow("inside url") << "image: url(@@@unchecked-image@@@);" << "image: " + right + ";";
        QTest::newRow("quoted url") << "image: url( \"@@@checked-image@@@\" );" << "image: " + left + ";";
        QTest::newRow("both, swapped")
            << "QPushButton { image: @@@checked-image@@@; } QPushButton:checked { image: @@@unchecked-image@@@; }"
            << "QPushButton { image: " + left + "; } QPushButton:checked { image: " + right + "; }";
        QTest::newRow("none") << "color: red;" << "color: red;";
    }

    void styleSheetPlaceholders()
    {
        QFETCH(QString, styleSheet);
        QFETCH(QString, expected);
        QPushButton button;
        button.setStyleSheet(styleSheet);
        ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(&button);
        QCOMPARE(button.styleSheet(), expected);
        const QRegularExpression url(QStringLiteral("url\\(([^)]*)\\)"));
        for (const QRegularExpressionMatch &match : url.globalMatch(button.styleSheet()))
            QVERIFY(QFile::exists(match.captured(1)));
    }

    void styleSheetWithUnknownImage()
    {
        QPushButton button;
        button.setStyleSheet(QStringLiteral("image: @@@x@@@;"));
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("No image named"));
        ZYLSysResourceManager::ResolveStyleSheetImage(&button, QStringLiteral("@@@x@@@"), QStringLiteral("nothing"));
        QCOMPARE(button.styleSheet(), QStringLiteral("image: url(:/zyl/images/zyl-placeholder.svg);"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("needs a widget"));
        ZYLSysResourceManager::ResolveUpDownImagesOfStyleSheet(nullptr);
    }
};

QTEST_MAIN(tst_ZYLSysResourceManager)
#include "tst_ZYLSysResourceManager.moc"
