// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// A batch context outliving its environment ends quietly and never ends another
// environment's batch.

#include "ZYLVisTestScene.h"

#include <QTest>

#include <optional>

class tst_ZYLVisEnvironmentBatchContext : public QObject {
    Q_OBJECT

private slots:
    void environmentDestroyedDuringBatch();
};

void tst_ZYLVisEnvironmentBatchContext::environmentDestroyedDuringBatch()
{
    auto env = std::make_unique<ZYLVisEnvironment>();
    std::unique_ptr<ZYLVisEnvironment> next;
    std::optional<ZYLVisEnvironmentBatchContext> own;
    {
        ZYLVisEnvironmentBatchContext batch(env.get());
        env.reset();
        // Often made where the destroyed one was: a context that kept a plain pointer would
        // end this one's batch when it ends.
        next = std::make_unique<ZYLVisEnvironment>();
        own.emplace(next.get());
    }
    QVERIFY(next->IsInBatch());
    own.reset();
    QVERIFY(!next->IsInBatch());
}

QTEST_GUILESS_MAIN(tst_ZYLVisEnvironmentBatchContext)
#include "tst_ZYLVisEnvironmentBatchContext.moc"
