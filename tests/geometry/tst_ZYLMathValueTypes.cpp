// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLMathAxis.h"
#include "ZYLMathBoundingBox.h"
#include "ZYLMathLine.h"

#include <QBuffer>
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

// A frame as the stream holds it, written field by field so that it can be broken.
QByteArray Serialised(const ZYLMathPoint &origin, const ZYLMathVector &x, const ZYLMathVector &y, const ZYLMathVector &z)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << origin << x << y << z;
    return bytes;
}

} // namespace

class tst_ZYLMathValueTypes : public QObject {
    Q_OBJECT

private slots:

    void normalize_data()
    {
        QTest::addColumn<ZYLMathVector>("vector");
        QTest::addColumn<bool>("ok");
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        constexpr double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("plain") << ZYLMathVector(3.0, 4.0, 12.0) << true;
        QTest::newRow("zero") << ZYLMathVector() << false;
        QTest::newRow("huge, squares overflow") << ZYLMathVector(1e200, -1e200, 1e199) << true;
        QTest::newRow("tiny, squares underflow") << ZYLMathVector(0.0, 3e-200, 4e-200) << true;
        QTest::newRow("subnormal") << ZYLMathVector(5e-324, 0.0, 0.0) << true;
        QTest::newRow("nan") << ZYLMathVector(nan, 1.0, 0.0) << false;
        QTest::newRow("infinite") << ZYLMathVector(inf, 1.0, 0.0) << false;
    }

    void normalize()
    {
        QFETCH(ZYLMathVector, vector);
        QFETCH(bool, ok);
        ZYLMathVector v = vector;
        QCOMPARE(v.Normalize(), ok);
        QCOMPARE(vector.Normalized().has_value(), ok);
        if (!ok) {
            // Refused input is left as it was (NaN compares unequal, so compare the bits).
            QCOMPARE(std::memcmp(&v, &vector, sizeof v), 0);
            return;
        }
        QVERIFY(std::abs(v.GetLength() - 1.0) < eps);
        QVERIFY(std::isfinite(v.X()) && std::isfinite(v.Y()) && std::isfinite(v.Z()));
        // Same direction as the input.
        for (int i = 0; i < 3; ++i)
            QVERIFY((v[i] > 0) == (vector[i] > 0) && (v[i] < 0) == (vector[i] < 0));
        QVERIFY(Near(*vector.Normalized(), v));
    }

    void frameFromDirections_data()
    {
        QTest::addColumn<ZYLMathVector>("first");
        QTest::addColumn<ZYLMathVector>("second");
        QTest::addColumn<bool>("ok");
        QTest::newRow("world") << ZYLMathVector(1, 0, 0) << ZYLMathVector(0, 1, 0) << true;
        QTest::newRow("skew, unnormalised") << ZYLMathVector(1, 2, 0.5) << ZYLMathVector(-0.3, 1, 4) << true;
        QTest::newRow("nearly parallel but usable") << ZYLMathVector(1, 0, 0) << ZYLMathVector(1, 1e-6, 0) << true;
        QTest::newRow("parallel") << ZYLMathVector(1, 1, 1) << ZYLMathVector(2, 2, 2) << false;
        QTest::newRow("antiparallel") << ZYLMathVector(0, 0, 1) << ZYLMathVector(0, 0, -3) << false;
        QTest::newRow("zero first") << ZYLMathVector() << ZYLMathVector(0, 1, 0) << false;
        QTest::newRow("zero second") << ZYLMathVector(1, 0, 0) << ZYLMathVector() << false;
    }

    void frameFromDirections()
    {
        QFETCH(ZYLMathVector, first);
        QFETCH(ZYLMathVector, second);
        QFETCH(bool, ok);
        const std::optional<ZYLMathAxis> axis = ZYLMathAxis::Create(ZYLMathPoint(1, 2, 3), first, second);
        QCOMPARE(axis.has_value(), ok);
        ZYLMathAxis kept = SkewFrame();
        const ZYLMathAxis before = kept;
        QCOMPARE(kept.SetDirections(first, second), ok);
        if (!ok) {
            QCOMPARE(kept, before);
            // The constructor falls back to a usable frame rather than a broken one.
            VerifyOrthonormal(ZYLMathAxis(ZYLMathPoint(), first, second));
            return;
        }
        VerifyOrthonormal(*axis);
        QVERIFY(Near(axis->GetFirstDirection(), *first.Normalized()));
        // The second direction stays in the plane of the two given ones, on the same side.
        QVERIFY(std::abs(axis->GetThirdDirection().Dot(second)) < 1e-9 * second.GetLength());
        QVERIFY(axis->GetSecondDirection().Dot(second) > 0.0);
    }

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

    void roundTrips()
    {
        const ZYLMathAxis frame = SkewFrame();
        VerifyOrthonormal(frame);
        const ZYLMathPoint p(-40.0, 7.25, 1e3);
        const ZYLMathVector v(0.5, -2.0, 9.0);
        QVERIFY(Near(frame.ToGlobal(frame.ToLocal(p)), p, 1e-9));
        QVERIFY(Near(frame.ToLocal(frame.ToGlobal(p)), p, 1e-9));
        QVERIFY(Near(frame.ToGlobal(frame.ToLocal(v)), v));
        // Vectors do not move with the origin; points do.
        QVERIFY(Near(frame.ToGlobal(v), frame.ToGlobal(ZYLMathPoint() + v) - frame.GetOrigin()));
        // Local axes of the frame itself are the world axes.
        QVERIFY(frame.ToLocal(frame).IsEqual(ZYLMathAxis(), 1e-9, 1e-12));
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

    void rotated()
    {
        const ZYLMathAxis frame(ZYLMathPoint(2, 0, 0), ZYLMathVector(1, 0, 0), ZYLMathVector(0, 1, 0));
        const ZYLMathAxis turned = frame.Rotated(ZYLMathPoint(1, 0, 0), ZYLMathVector(0, 0, 5), std::numbers::pi / 2);
        VerifyOrthonormal(turned);
        QVERIFY(Near(turned.GetOrigin(), ZYLMathPoint(1, 1, 0)));
        QVERIFY(Near(turned.GetFirstDirection(), ZYLMathVector(0, 1, 0)));
        QVERIFY(Near(turned.GetSecondDirection(), ZYLMathVector(-1, 0, 0)));
        QVERIFY(Near(turned.GetThirdDirection(), ZYLMathVector(0, 0, 1)));
        // A turn and its opposite cancel; a zero axis changes nothing.
        const ZYLMathAxis skew = SkewFrame();
        const ZYLMathVector axis(1, -2, 0.5);
        QVERIFY(skew.Rotated(ZYLMathPoint(4, 4, 4), axis, 0.7).Rotated(ZYLMathPoint(4, 4, 4), axis, -0.7).IsEqual(skew, 1e-9, 1e-12));
        QCOMPARE(skew.Rotated(ZYLMathPoint(), ZYLMathVector(), 1.0), skew);
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

    void corruptStreamIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = Serialised(SkewFrame());
        QTest::newRow("truncated") << good.left(good.size() - 5);
        QTest::newRow("empty") << QByteArray();
        const ZYLMathVector x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
        QTest::newRow("not orthonormal") << Serialised(ZYLMathPoint(1, 2, 3), x, ZYLMathVector(0.5, 1, 0), z);
        QTest::newRow("left-handed") << Serialised(ZYLMathPoint(), x, y, -z);
        QTest::newRow("NaN origin") << Serialised(ZYLMathPoint(std::nan(""), 0, 0), x, y, z);
    }

    void corruptStreamIsRefused()
    {
        QFETCH(QByteArray, bytes);
        QDataStream in(bytes);
        ZYLMathAxis read = SkewFrame();
        in >> read;
        QVERIFY(in.status() != QDataStream::Ok);
        QCOMPARE(read, SkewFrame());
    }

    void shortStreamLeavesPointUnchanged()
    {
        QByteArray bytes;
        {
            QDataStream out(&bytes, QIODevice::WriteOnly);
            out << 1.0 << 2.0; // a point needs three coordinates
        }
        QDataStream in(bytes);
        ZYLMathPoint p(7, 8, 9);
        in >> p;
        QVERIFY(in.status() != QDataStream::Ok);
        QCOMPARE(p, ZYLMathPoint(7, 8, 9));
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
