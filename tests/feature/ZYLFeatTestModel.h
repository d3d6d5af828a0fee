// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLFeatChange.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// A small model for the transaction tests: a root with values, an array and a list of
/// children, each child with values, an array and a list of leaves. `Dump` writes every value
/// and the address of every object, so two dumps are equal only if state and identity are.
/// Leaves and children count how many of them are alive.
class ZYLFeatTestModel {
public:
    struct Leaf {
        explicit Leaf(double w) : weight(w) { ++alive; }
        ~Leaf() { --alive; }
        double weight;
        static inline int alive = 0;
    };
    struct Child {
        Child(const QString &l, double v) : label(l), x(v) { ++alive; }
        ~Child() { --alive; }
        QString label;
        double x;
        std::vector<std::unique_ptr<Leaf>> leaves;
        std::vector<double> samples;
        static inline int alive = 0;
    };

    /// Swaps two arrays in place: a custom change of whole arrays.
    class SwapArrays final : public ZYLFeatChange {
    public:
        SwapArrays(std::vector<double> &a, std::vector<double> &b) : m_a(&a), m_b(&b) {}
        void Undo() override { m_a->swap(*m_b); }
        void Redo() override { m_a->swap(*m_b); }

    private:
        std::vector<double> *m_a;
        std::vector<double> *m_b;
    };

    /// Doubles a value in place: a custom change that writes a field that value changes
    /// also set.
    class DoubleInPlace final : public ZYLFeatChange {
    public:
        explicit DoubleInPlace(double &v) : m_v(&v) {}
        void Undo() override { *m_v /= 2.0; }
        void Redo() override { *m_v *= 2.0; }

    private:
        double *m_v;
    };

    double value = 0.0;
    int count = 0;
    std::vector<std::unique_ptr<Child>> children;
    std::vector<double> samples;

    /// Fills the model (outside any transaction) with `n` children of two leaves each.
    void Populate(int n)
    {
        samples = {1.0, 2.0, 3.0, 4.0};
        for (int i = 0; i < n; ++i) {
            auto child = std::make_unique<Child>(QStringLiteral("c%1").arg(i), i * 1.5);
            child->leaves.push_back(std::make_unique<Leaf>(i + 0.25));
            child->leaves.push_back(std::make_unique<Leaf>(i + 0.75));
            child->samples = {double(i), double(-i)};
            children.push_back(std::move(child));
        }
    }

    QString Dump() const
    {
        QStringList out;
        out << QStringLiteral("v=%1 n=%2 s=%3").arg(value, 0, 'g', 17).arg(count).arg(Join(samples));
        for (const auto &c : children) {
            out << QStringLiteral(" C%1 %2 x=%3 s=%4")
                       .arg(quintptr(c.get()), 0, 16)
                       .arg(c->label)
                       .arg(c->x, 0, 'g', 17)
                       .arg(Join(c->samples));
            for (const auto &l : c->leaves)
                out << QStringLiteral("  L%1 w=%2").arg(quintptr(l.get()), 0, 16).arg(l->weight, 0, 'g', 17);
        }
        return out.join(QLatin1Char('\n'));
    }

private:
    static QString Join(const std::vector<double> &values)
    {
        QStringList parts;
        for (double v : values)
            parts << QString::number(v, 'g', 17);
        return parts.join(QLatin1Char(','));
    }
};
