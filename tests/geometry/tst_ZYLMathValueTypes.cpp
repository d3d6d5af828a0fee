// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLMathAxis.h"
#include "ZYLMathLine.h"

#include <QDataStream>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

Q_DECLARE_METATYPE(ZYLMathVector)
Q_DECLARE_METATYPE(ZYLMathPoint)

namespace {

constexpr double eps = 1e-12;

bool Near(const ZYLMathVector &a, const ZYLMathVector &b, double tolerance = eps)
{
    return (a - b).GetLength() <= tolerance;
}

bool Near(const ZYLMathPoint &a, const ZYLMathPoint &b, double tolerance = eps)
{
    return a.GetDistanceTo(b) <= tolerance;
}

void VerifyOrthonormal(const ZYLMathAxis &axis)
{
    for (int i = 0; i < 3; ++i) {
        QVERIFY(std::abs(axis.GetDirection(i).GetLength() - 1.0) < eps);
        for (int j = i + 1; j < 3; ++j)
            QVERIFY(std::abs(axis.GetDirection(i).Dot(axis.GetDirection(j))) < eps);
    }
    // Right-handed: third = first × second.
    QVERIFY(Near(axis.GetFirstDirection().Cross(axis.GetSecondDirection()), axis.GetThirdDirection()));
}

ZYLMathAxis SkewFrame()
{
    return ZYLMathAxis(ZYLMathPoint(12.5, -3.0, 800.0), ZYLMathVector(1.0, 2.0, 0.5), ZYLMathVector(-0.3, 1.0, 4.0));
}

QByteArray Serialised(const ZYLMathAxis &axis)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << axis;
    return bytes;
}

} // namespace

class tst_ZYLMathValueTypes : public QObject {
    Q_OBJECT

private slots:

    void fromThirdAndFirst()
    {
        const ZYLMathVector third(0.2, -0.5, 3.0);
        const std::optional<ZYLMathAxis> axis = ZYLMathAxis::FromThirdAndFirst(ZYLMathPoint(), third, ZYLMathVector(1, 1, 0));
        QVERIFY(axis);
        VerifyOrthonormal(*axis);
        QVERIFY(Near(axis->GetThirdDirection(), *third.Normalized()));
        QVERIFY(axis->GetFirstDirection().Dot(ZYLMathVector(1, 1, 0)) > 0.0);
        QVERIFY(!ZYLMathAxis::FromThirdAndFirst(ZYLMathPoint(), third, third * 2.0));
        QVERIFY(!ZYLMathAxis::FromThirdAndFirst(ZYLMathPoint(), ZYLMathVector(), ZYLMathVector(1, 0, 0)));
    }

    void inverseAndComposition()
    {
        const ZYLMathAxis a = SkewFrame();
        const ZYLMathAxis b(ZYLMathPoint(3, 0, -1), ZYLMathVector(0, 0, 1), ZYLMathVector(1, 1, 0));
        const ZYLMathPoint p(5.0, -6.0, 7.0);
        QVERIFY(Near(a.Inverse().ToGlobal(p), a.ToLocal(p), 1e-9));
        VerifyOrthonormal(a.Inverse());
        QVERIFY(a.ToGlobal(a.Inverse()).IsEqual(ZYLMathAxis(), 1e-9, 1e-12));
        QVERIFY(a.Inverse().Inverse().IsEqual(a, 1e-9, 1e-12));
        // Composition: b placed in a, then mapped, equals mapping by b then by a.
        QVERIFY(Near(a.ToGlobal(b).ToGlobal(p), a.ToGlobal(b.ToGlobal(p)), 1e-9));
        QVERIFY(Near(a.ToLocal(a.ToGlobal(b)).GetOrigin(), b.GetOrigin(), 1e-9));
    }

    void streamRoundTripIsExact()
    {
        // Directions whose last bits a lossy format would change.
        const ZYLMathAxis frame = SkewFrame().Rotated(ZYLMathPoint(0.1, 0.2, 0.3), ZYLMathVector(1, 3, 7), 1.234567);
        const QByteArray bytes = Serialised(frame);
        QDataStream in(bytes);
        ZYLMathAxis read;
        in >> read;
        QCOMPARE(in.status(), QDataStream::Ok);
        QVERIFY(read == frame);
    }

    void lineDistance()
    {
        ZYLMathLine line;
        line.SetOrigin(ZYLMathPoint(1, 1, 0));
        line.SetVector(ZYLMathVector(0, 0, 10));
        QVERIFY(std::abs(line.GetSquaredDistanceTo(ZYLMathPoint(4, 5, -30)) - 25.0) < eps);
        // A zero vector degenerates to the distance to the origin.
        line.SetVector(ZYLMathVector());
        QVERIFY(std::abs(line.GetSquaredDistanceTo(ZYLMathPoint(1, 1, 2)) - 4.0) < eps);
    }
};

QTEST_GUILESS_MAIN(tst_ZYLMathValueTypes)
#include "tst_ZYLMathValueTypes.moc"
