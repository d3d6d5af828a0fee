// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatContainer.h"
#include "ZYLFeatContainerManager.h"
#include "ZYLFeatContainerProvider.h"
#include "ZYLFeatEnvironment.h"
#include "ZYLFeatEnvironmentManager.h"
#include "ZYLFeatGeometry.h"
#include "ZYLFeatTransactionContext.h"
#include "ZYLFeatVisualizationConfig.h"

#include "ZYLGeoBody.h"
#include "ZYLGeoPlane.h"
#include "ZYLGeoPolyline.h"
#include "ZYLSysException.h"
#include "ZYLVisRep.h"
#include "ZYLVisRepFactory.h"
#include "ZYLVisRepSet.h"
#include "ZYLVisVirtualObject.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

// A body with one square surface and one curve.
ZYLGeoBody *NewBody()
{
    auto *body = new ZYLGeoBody;
    const ZYLGeoRef<ZYLGeoPlane> plane = ZYLGeoPlane::Create(ZYLMathAxis(), ZYLGeoSurface::Domain{0.0, 10.0, 0.0, 10.0});
    const ZYLGeoRef<ZYLGeoPolyline> line = ZYLGeoPolyline::Create({ZYLMathPoint(0, 0, 0), ZYLMathPoint(10, 0, 0)});
    body->AddSurface(plane.get());
    body->AddCurve(line.get());
    return body;
}

// A provider that draws nothing and counts how many of it are alive.
class CountingProvider final : public ZYLFeatContainerProvider {
public:
    CountingProvider() { ++alive; }
    ~CountingProvider() override { --alive; }
    ZYLVisRep *CreateRep(ZYLFeatContainer *) const override { return new ZYLVisRepSet({}); }
    static inline int alive = 0;
};

void AddFeature(ZYLFeatContainer &container, ZYLFeatObject *feature)
{
    container.OpenTransaction("add");
    container.AddFeature(feature);
    container.CommitTransaction();
}

} // namespace

class tst_ZYLFeatEnvironment : public QObject {
    Q_OBJECT
private slots:
    void cleanup();
    void providerDrawsGeometryFeatures_data();
    void providerDrawsGeometryFeatures();
    void customProviderEndsWithContainer();
    void contentFollowsFeaturesAndUndo();
    void contextDrawsOnceAtEnd_data();
    void contextDrawsOnceAtEnd();
    void invalidVisibleGeometryRefused();
};

void tst_ZYLFeatEnvironment::cleanup()
{
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
}

void tst_ZYLFeatEnvironment::providerDrawsGeometryFeatures_data()
{
    QTest::addColumn<bool>("withEnvironment");
    QTest::addColumn<int>("visible");
    QTest::newRow("environment: all") << true << int(ZYLVisRepFactory::VisibleAll);
    QTest::newRow("environment: surfaces") << true << int(ZYLVisRepFactory::VisibleSurfaces);
    // Without an environment the provider draws with the defaults: curves and surfaces.
    QTest::newRow("no environment") << false << int(ZYLVisRepFactory::VisibleCurves | ZYLVisRepFactory::VisibleSurfaces);
}

// One representation per geometry feature with a body, built as the factory builds it
// with the configuration in force; other features are left out.
void tst_ZYLFeatEnvironment::providerDrawsGeometryFeatures()
{
    QFETCH(bool, withEnvironment);
    QFETCH(int, visible);
    ZYLFeatContainer container;
    AddFeature(container, new ZYLFeatGeometry(NewBody(), "panel"));
    AddFeature(container, new ZYLFeatObject("not geometry"));
    AddFeature(container, new ZYLFeatGeometry(nullptr, "empty"));
    AddFeature(container, new ZYLFeatGeometry(NewBody(), "second panel"));

    ZYLFeatVisualizationConfig config;
    std::unique_ptr<ZYLFeatEnvironment> environment;
    if (withEnvironment) {
        config.SetVisibleGeometry(visible);
        ZYLVisOptions surface = config.GetSurfaceOptions();
        surface.SetColor(Qt::red);
        config.SetSurfaceOptions(surface);
        environment = std::make_unique<ZYLFeatEnvironment>(&container);
        environment->SetSurfaceConfig(config);
        ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(environment.get());
    }
    QCOMPARE(config.GetVisibleGeometry(), visible);

    const std::unique_ptr<ZYLVisRep> rep(
        ZYLFeatContainerManager::GetManager()->GetProvider(&container)->CreateRep(&container));
    QVERIFY(qobject_cast<ZYLVisRepSet *>(rep.get()));
    QCOMPARE(rep->GetNumChildren(), 2);
    auto *panel = qobject_cast<ZYLFeatGeometry *>(container.GetFeatures().first());
    const std::unique_ptr<ZYLVisRep> expected(
        ZYLVisRepFactory::CreateRep(panel->GetBody(), config.GetPointOptions(), config.GetCurveOptions(),
                                    config.GetSurfaceOptions(), config.GetVisibleGeometry()));
    for (int i = 0; i < 2; ++i) {
        const auto drawn = rep->GetChild(i)->GetAllPrimitives();
        const auto wanted = expected->GetAllPrimitives();
        QCOMPARE(drawn.size(), wanted.size());
        for (size_t k = 0; k < drawn.size(); ++k)
            QCOMPARE(*drawn[k].options, *wanted[k].options);
    }
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, ZYLFeatContainerManager::GetManager()->GetProvider(nullptr));
    QVERIFY_THROWS_EXCEPTION(ZYLSysException,
                             ZYLFeatContainerManager::GetManager()->GetProvider(&container)->CreateRep(nullptr));
}

void tst_ZYLFeatEnvironment::customProviderEndsWithContainer()
{
    ZYLFeatContainerManager *manager = ZYLFeatContainerManager::GetManager();
    ZYLFeatContainer other;
    {
        ZYLFeatContainer container;
        manager->SetProvider(&container, std::make_unique<CountingProvider>());
        manager->SetProvider(&container, std::make_unique<CountingProvider>()); // replaces
        QCOMPARE(CountingProvider::alive, 1);
        QVERIFY(dynamic_cast<CountingProvider *>(manager->GetProvider(&container)));
        QVERIFY(!dynamic_cast<CountingProvider *>(manager->GetProvider(&other)));
    }
    QCOMPARE(CountingProvider::alive, 0);
    manager->SetProvider(&other, std::make_unique<CountingProvider>());
    manager->SetProvider(&other, nullptr);
    QCOMPARE(CountingProvider::alive, 0);
    QVERIFY(!dynamic_cast<CountingProvider *>(manager->GetProvider(&other)));
}

void tst_ZYLFeatEnvironment::contentFollowsFeaturesAndUndo()
{
    ZYLFeatContainer container;
    ZYLFeatEnvironment environment(&container);
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&environment);
    const auto drawnFeatures = [&environment] {
        const ZYLVisRep *rep = environment.GetContentObject()->GetRep();
        return rep ? rep->GetNumChildren() : -1;
    };
    QCOMPARE(drawnFeatures(), 0);
    QVERIFY(environment.GetVirtualObjects().contains(environment.GetContentObject()));

    auto *panel = new ZYLFeatGeometry(NewBody(), "panel");
    AddFeature(container, panel);
    QCOMPARE(drawnFeatures(), 1);
    container.OpenTransaction("clear body");
    panel->SetBody(nullptr);
    QCOMPARE(drawnFeatures(), 0);
    container.CommitTransaction();
    container.Undo();
    QCOMPARE(drawnFeatures(), 1);
    container.Undo();
    QCOMPARE(drawnFeatures(), 0);
    container.Redo();
    QCOMPARE(drawnFeatures(), 1);
}

void tst_ZYLFeatEnvironment::contextDrawsOnceAtEnd_data()
{
    QTest::addColumn<int>("behavior");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<int>("redraws");
    QTest::addColumn<int>("drawnAtEnd");
    QTest::newRow("update at end, flagged") << int(ZYLFeatTransactionContext::UpdateDisplayAtEnd) << true << 1 << 3;
    // Rolled back: drawn once, without the features.
    QTest::newRow("update at end, unflagged") << int(ZYLFeatTransactionContext::UpdateDisplayAtEnd) << false << 1 << 0;
}

void tst_ZYLFeatEnvironment::contextDrawsOnceAtEnd()
{
    QFETCH(int, behavior);
    QFETCH(bool, flag);
    QFETCH(int, redraws);
    QFETCH(int, drawnAtEnd);
    ZYLFeatContainer container;
    ZYLFeatEnvironment environment(&container);
    ZYLFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&environment);
    QSignalSpy changed(&environment, &ZYLVisEnvironment::Changed);
    container.OpenTransaction("command");
    {
        ZYLFeatTransactionContext context(&container, "Execute Collision", false,
                                          ZYLFeatTransactionContext::AutoUpdateBehavior(behavior));
        for (int i = 0; i < 3; ++i)
            container.AddFeature(new ZYLFeatGeometry(NewBody(), QString::number(i)));
        if (flag)
            context.FlagComplete();
    }
    QCOMPARE(changed.count(), redraws);
    QCOMPARE(environment.GetContentObject()->GetRep()->GetNumChildren(), drawnAtEnd);
    container.CommitTransaction();
}

void tst_ZYLFeatEnvironment::invalidVisibleGeometryRefused()
{
    ZYLFeatVisualizationConfig config;
    const int before = config.GetVisibleGeometry();
    QVERIFY_THROWS_EXCEPTION(ZYLSysException, config.SetVisibleGeometry(8));
    QCOMPARE(config.GetVisibleGeometry(), before);
}

QTEST_MAIN(tst_ZYLFeatEnvironment)
#include "tst_ZYLFeatEnvironment.moc"
