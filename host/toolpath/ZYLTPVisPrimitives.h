// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

// Building blocks shared by the tool path representations and ZYLTPVisualizationUtil.
// Internal to the tool path library.

#include "ZYLTPVisualizationOptions.h"

#include "ZYLMathAxis.h"
#include "ZYLVisPrimitive.h"

#include <QList>

#include <array>
#include <memory>
#include <vector>

/// Primitives under construction, each with its display options. Owns the primitives until
/// `Release`, so that a primitive that fails to build (a coordinate that is not finite)
/// leaves nothing behind.
class ZYLTPVisPrimitiveList {
public:
    /// Adds a primitive drawn with `options`; a null primitive is ignored.
    void Add(std::unique_ptr<ZYLVisPrimitive> primitive, const ZYLVisOptions &options);
    /// Adds the points as one dot primitive, the segment end points (pairs) as one segment
    /// primitive, the points as one polyline. Empty input adds nothing.
    void AddPoints(std::vector<ZYLMathPoint> points, const ZYLVisOptions &options);
    void AddSegments(std::vector<ZYLMathPoint> endPoints, const ZYLVisOptions &options);
    void AddPolyline(std::vector<ZYLMathPoint> points, const ZYLVisOptions &options);

    int GetNumPrimitives() const { return int(m_primitives.size()); }
    /// Returns the primitives (still owned by the list) and their options, in order.
    QList<ZYLVisPrimitive *> GetPrimitives() const;
    const QList<ZYLVisOptions> &GetOptions() const { return m_options; }
    /// Gives up ownership of every primitive; the list is empty afterwards.
    void Release();

private:
    std::vector<std::unique_ptr<ZYLVisPrimitive>> m_primitives;
    QList<ZYLVisOptions> m_options;
};

/// The vector segments of a run of point frames: for each vector bit asked for, one segment
/// from the frame's origin along that direction, optionally with an arrow head.
class ZYLTPVisVectorSegments {
public:
    ZYLTPVisVectorSegments(ZYLTPVisualizationOptions::VectorsToDisplay vectors, double length, bool arrows);

    /// Returns whether any vector is asked for.
    bool IsEmpty() const { return m_kinds.empty(); }
    /// Makes room for the vectors of `numFrames` frames.
    void Reserve(int numFrames);
    /// Adds the vectors of one frame.
    void Add(const ZYLMathAxis &frame);
    /// Adds one segment primitive per vector kind asked for, in the order laying direction,
    /// side direction, tool axis, each with the attributes of its element in `options`, to
    /// `out`; kinds that got no segment add nothing.
    void AddTo(const ZYLTPVisualizationOptions &options, ZYLTPVisPrimitiveList &out);

private:
    struct Kind {
        ZYLTPVisualizationOptions::VectorsToDisplay bit;
        int direction;
        std::vector<ZYLMathPoint> endPoints;
    };
    std::vector<Kind> m_kinds;
    double m_length;
    bool m_arrows;
};
