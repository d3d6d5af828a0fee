// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLFeatTestModel.h"

#include "ZYLFeatContainer.h"
#include "ZYLFeatRecorder.h"
#include "ZYLGeoGeometry.h"

#include <QtTest>

#include <functional>

namespace {

using Model = ZYLFeatTestModel;
using Edit = std::function<void(Model &)>;

// Shared geometry that counts how many of it are alive.
class CountedGeometry final : public ZYLGeoGeometry {
public:
    CountedGeometry() { ++alive; }
    ~CountedGeometry() override { --alive; }
    static inline int alive = 0;
};

} // namespace

Q_DECLARE_METATYPE(Edit)

class tst_ZYLFeatRecorder : public QObject {
    Q_OBJECT
private slots:
    void replacedReferenceLivesWhileInHistory();
};

void tst_ZYLFeatRecorder::replacedReferenceLivesWhileInHistory()
{
    {
        auto *first = new CountedGeometry;
        auto *second = new CountedGeometry;
        const ZYLGeoGeometry *field = first;
        first->AddReference(); // the owner's reference
        ZYLFeatContainer container;
        container.OpenTransaction("swap");
        ZYLFeatRecorder::SetReference(field, second);
        container.CommitTransaction();
        QCOMPARE(field, second);
        QCOMPARE(CountedGeometry::alive, 2);
        container.Undo();
        QCOMPARE(field, first);
        container.Redo();
        QCOMPARE(field, second);
        container.ClearHistory();
        QCOMPARE(CountedGeometry::alive, 1); // first had only the change's reference left
        QCOMPARE(second->GetReferenceCount(), 1);
        field->RemoveReference();
    }
    QCOMPARE(CountedGeometry::alive, 0);
}

QTEST_GUILESS_MAIN(tst_ZYLFeatRecorder)
#include "tst_ZYLFeatRecorder.moc"
