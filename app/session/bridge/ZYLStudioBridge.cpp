// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// The bridge between the studio session and the module's graphics manager. The session loads
// this library after the module and reaches the manager only through the factory below.
#include "ZYLStudioBridgeExport.h"
#include "ZYLStudioGraphicsBridge.h"
#include "ZYLStudioGraphicsMgr.h"

#include <memory>

namespace {

class StudioGraphicsBridge final : public ZYLStudioGraphicsBridge {
public:
    QObject *GetManager() const override { return m_manager.get(); }

    void EnterEditEnvironment(const EditContext &context) override {
        LeaveEditEnvironment();
        ZYLEditTPGraphicsMgr *manager = m_manager.get();
        manager->SetEditToolPathVisEnvironment(context.environment);
        manager->SetToolPathProgram(context.program);
        manager->SetEditToolPathFeature(context.feature);
        manager->SetSurfaces(context.surfaces);
        manager->SetPlyBoundaryCurves(context.plyBoundaries);
        if (context.head)
            manager->SetMachineHead(context.head);
        for (const auto &[id, container] : context.rollers)
            manager->AddRoller(id, container);
        for (const auto &[id, points] : context.headCollisionPoints)
            manager->AddHeadCollisionPoints(id, points);
        for (const auto &[id, points] : context.rollerCollisionPoints)
            manager->AddRollerCollisionPoints(id, points);
        manager->SetLayupDirection(context.layupDirection);
        manager->SetFeedTowsIndividually(context.feedTowsIndividually);
        manager->SetFeedTowsAtSeparateRates(context.feedTowsAtSeparateRates);
        manager->EnterToolPathEnv();
        m_entered = true;
        manager->UpdateAllGraphics(manager->GetCurrentOptions());
        manager->UpdateUISettingGraphics();
    }

    void LeaveEditEnvironment() override {
        if (!m_entered)
            return;
        m_entered = false;
        // The tool path nodes live in the environment that leaving deletes.
        m_manager->RemoveEditToolPathGraphics();
        m_manager->LeaveToolPathEnv();
    }

    ZYLVisEnvironment *GetEditEnvironment() const override { return m_manager->GetEditToolPathVisEnvironment(); }

    ~StudioGraphicsBridge() override { LeaveEditEnvironment(); }

private:
    std::unique_ptr<ZYLStudioGraphicsMgr> m_manager = std::make_unique<ZYLStudioGraphicsMgr>();
    bool m_entered = false;
};

} // namespace

extern "C" ZYLSTUDIOBRIDGE_EXPORT ZYLStudioGraphicsBridge *ZYLCreateStudioGraphicsBridge() {
    return new StudioGraphicsBridge;
}
