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

} // namespace

class tst_ZYLSysResourceManager : public QObject {
    Q_OBJECT
private slots:
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
        QTest::newRow("empty") << "";
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

    void styleSheetPlaceholders_data()
    {
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<QString>("expected");
        const QString left = QStringLiteral("url(:/zyl/images/button-collapse-left.svg)");
        const QString right = QStringLiteral("url(:/zyl/images/button-collapse-right.svg)");
        QTest::newRow("inside url") << "image: url(@@@unchecked-image@@@);" << "image: " + right + ";";
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
