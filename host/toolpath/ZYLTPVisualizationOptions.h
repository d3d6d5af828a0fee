// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLVisOptions.h"

#include <QMetaType>

#include <array>

/// What the tool path representations draw (`ZYLTPCourseVisRep`, `ZYLTPLinkVisRep`,
/// `ZYLTPBreakRangeVisRep`) and how: switches, display modes and the display options
/// (`ZYLVisOptions`, "graphic attributes") of each kind of element. A plain value type; a
/// default-constructed value holds the defaults of the global display options
/// (`ZYLTPVisualizationSettings`).
///
/// Switches:
/// - course: whether courses get a node at all (read by whoever builds the nodes; a course
///   representation ignores it);
/// - approach/retract: the approach and retract motion of each course;
/// - roll-in/out: the roll-in and roll-out stretches of each course;
/// - tip points: the laying points of a course as dots, with the vectors of
///   `GetLayingVectorsToDisplay()` (without tip points no laying vector is drawn either);
/// - laying trajectory: the centre line of a course through its tow points;
/// - linking trajectories: the motion line of a link (and whether links get nodes);
/// - linking points: the points of a link as dots, with `GetLinkingVectorsToDisplay()`;
/// - break range: whether break ranges get nodes (a break range representation ignores it).
///
/// Tows. A tow course is drawn as tows side by side across the side direction of its points,
/// each `GetTowWidth()` wide (6.35 mm by default), centred on the tip points: a course whose
/// highest tow index is t lays t + 1 tow lanes, tow 0 on the far minus side. A tow is drawn
/// only where a tow trajectory lays it, from that trajectory's first point to the next one's.
/// A tow piece runs from where the tow is added to where it is cut; it is short when its
/// length is below `GetMinimumTowLength()`.
///
/// Vectors are drawn from the tip point along the point's tool frame, `GetVectorLength()` mm
/// long: laying direction (first direction), side direction (second) and tool axis (third).
///
/// Default graphic attributes: the three vectors in the colours of a frame's axes (laying
/// direction red, side direction green, tool axis blue), white tip points, tows light steel
/// blue, short tows pink, tow edges dark grey, tow ends white, centre line cyan, approach and
/// retract amber, roll-in/out yellow-green, link lines lavender, linking points light grey,
/// break ranges thick yellow drawn as a secondary highlight.
class ZYLTOOLPATH_EXPORT ZYLTPVisualizationOptions {
public:
    /// Vectors drawn at points: a combination of the three single bits.
    enum VectorsToDisplay : int {
        NoVectors = 0,
        LayingDirection = 1,
        SideDirection = 2,
        ToolAxis = 4,
        ToolAxisAndLayingDirection = ToolAxis | LayingDirection,
        AllAxes = LayingDirection | SideDirection | ToolAxis,
    };
    /// Tow ends ("head profiles"): a line across each tow where it starts (is added) and/or
    /// where it stops (is cut), merged across neighbouring tows that start or stop together.
    enum HeadProfilesDisplay : int {
        NoHeadProfiles = 0,
        HeadProfilesAtAdds = 1,
        HeadProfilesAtCuts = 2,
        HeadProfilesAtAddsAndCuts = HeadProfilesAtAdds | HeadProfilesAtCuts,
    };
    /// Tow edges: lines along the sides of the laid tows. Outer edges outline each group of
    /// neighbouring laid tows; inner edges separate neighbouring laid tows within a group.
    enum TowEdgesDisplay : int {
        NoTowEdges = 0,
        OuterTowEdges = 1,
        InnerTowEdges = 2,
        AllTowEdges = OuterTowEdges | InnerTowEdges,
    };
    /// How the laid tows are filled (the course band). Values not listed fill nothing.
    enum ShortTowDisplay : int {
        /// No tow is filled: the course shows only its lines.
        NoTowFill = 0,
        /// Only the short tow pieces are filled, in the short tow colour.
        ShortTowsOnly = 1,
        /// Every laid tow is filled in the tow colour; short pieces are not told apart.
        AllTows = 2,
        /// Every laid tow is filled; short pieces in the short tow colour.
        AllTowsShortHighlighted = 4,
    };
    /// The kinds of drawn elements that have display options of their own.
    enum GraphicElement : int {
        TipPointElement,
        ToolAxisElement,
        /// The laying direction at a point, also named its tangent vector.
        TangentVectorElement,
        /// The side direction at a point, along the roller's axis.
        RollerAxisElement,
        CourseBandElement,
        ShortTowElement,
        TowEdgeElement,
        HeadProfileElement,
        LayingTrajectoryElement,
        ApproachRetractElement,
        RollInOutElement,
        LinkLineElement,
        LinkingPointElement,
        BreakRangeElement,
        NumGraphicElements
    };

    /// Builds the default options (see the class description).
    ZYLTPVisualizationOptions();

    bool IsCourseEnabled() const { return m_courseEnabled; }
    void SetCourseEnabled(bool enabled) { m_courseEnabled = enabled; }
    bool IsApproachRetractEnabled() const { return m_approachRetractEnabled; }
    void SetApproachRetractEnabled(bool enabled) { m_approachRetractEnabled = enabled; }
    bool IsRollInOutEnabled() const { return m_rollInOutEnabled; }
    void SetRollInOutEnabled(bool enabled) { m_rollInOutEnabled = enabled; }
    bool IsTipPointEnabled() const { return m_tipPointEnabled; }
    void SetTipPointEnabled(bool enabled) { m_tipPointEnabled = enabled; }
    bool IsLayingTrajectoryEnabled() const { return m_layingTrajectoryEnabled; }
    void SetLayingTrajectoryEnabled(bool enabled) { m_layingTrajectoryEnabled = enabled; }
    bool GetLinkingTrajectoriesEnabled() const { return m_linkingTrajectoriesEnabled; }
    void SetLinkingTrajectoriesEnabled(bool enabled) { m_linkingTrajectoriesEnabled = enabled; }
    bool IsLinkingPointsEnabled() const { return m_linkingPointsEnabled; }
    void SetLinkingPointsEnabled(bool enabled) { m_linkingPointsEnabled = enabled; }
    bool IsBreakRangeEnabled() const { return m_breakRangeEnabled; }
    void SetBreakRangeEnabled(bool enabled) { m_breakRangeEnabled = enabled; }

    /// Vectors at the laying points of courses (drawn with the tip points).
    VectorsToDisplay GetLayingVectorsToDisplay() const { return m_layingVectors; }
    void SetLayingVectorsToDisplay(VectorsToDisplay vectors) { m_layingVectors = vectors; }
    /// Vectors at the points of links (drawn with the linking points).
    VectorsToDisplay GetLinkingVectorsToDisplay() const { return m_linkingVectors; }
    void SetLinkingVectorsToDisplay(VectorsToDisplay vectors) { m_linkingVectors = vectors; }
    /// Vectors, as arrows, at the first and last point of each link, whatever the other
    /// switches of links say.
    VectorsToDisplay GetLinkEndPointsVectorsToDisplay() const { return m_linkEndPointsVectors; }
    void SetLinkEndPointsVectorsToDisplay(VectorsToDisplay vectors) { m_linkEndPointsVectors = vectors; }

    HeadProfilesDisplay GetTowHeadProfileDisplay() const { return m_headProfiles; }
    void SetTowHeadProfileDisplay(HeadProfilesDisplay display) { m_headProfiles = display; }
    TowEdgesDisplay GetTowEdgeDisplay() const { return m_towEdges; }
    void SetTowEdgeDisplay(TowEdgesDisplay display) { m_towEdges = display; }
    ShortTowDisplay GetShortTowDisplay() const { return m_shortTows; }
    void SetShortTowDisplay(ShortTowDisplay display) { m_shortTows = display; }

    /// Returns the drawn length of vectors (mm, default 20).
    double GetVectorLength() const { return m_vectorLength; }
    /// Sets the drawn length of vectors; throws `ZYLSysOutOfBoundsException` unless > 0.
    void SetVectorLength(double length);
    /// Returns the width of one tow (mm, default 6.35).
    double GetTowWidth() const { return m_towWidth; }
    /// Sets the width of one tow; throws `ZYLSysOutOfBoundsException` unless > 0.
    void SetTowWidth(double width);
    /// Returns the length below which a tow piece is short (mm, default 50).
    double GetMinimumTowLength() const { return m_minimumTowLength; }
    /// Sets the minimum tow length; throws `ZYLSysOutOfBoundsException` unless >= 0.
    void SetMinimumTowLength(double length);

    /// Returns the display options of a kind of element; throws `ZYLSysOutOfBoundsException`
    /// for a value that names none.
    const ZYLVisOptions &GetGraphicAttributes(GraphicElement element) const;
    /// Sets the display options of a kind of element; throws as `GetGraphicAttributes`.
    void SetGraphicAttributes(GraphicElement element, const ZYLVisOptions &attributes);
    /// Returns the element that draws one vector bit (LayingDirection, SideDirection or
    /// ToolAxis); throws `ZYLSysOutOfBoundsException` for any other value.
    static GraphicElement GetVectorElement(VectorsToDisplay vector);

    // Named access to the attributes the edit commands change.
    const ZYLVisOptions &GetTipPointGraphicAttributes() const { return GetGraphicAttributes(TipPointElement); }
    void SetTipPointGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(TipPointElement, a); }
    const ZYLVisOptions &GetToolAxisGraphicAttributes() const { return GetGraphicAttributes(ToolAxisElement); }
    void SetToolAxisGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(ToolAxisElement, a); }
    const ZYLVisOptions &GetTangentVectorGraphicAttributes() const { return GetGraphicAttributes(TangentVectorElement); }
    void SetTangentVectorGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(TangentVectorElement, a); }
    const ZYLVisOptions &GetRollerAxisGraphicAttributes() const { return GetGraphicAttributes(RollerAxisElement); }
    void SetRollerAxisGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(RollerAxisElement, a); }
    /// The laying direction attributes are the tangent vector attributes.
    const ZYLVisOptions &GetLayingDirectionGraphicAttributes() const { return GetTangentVectorGraphicAttributes(); }
    void SetLayingDirectionGraphicAttributes(const ZYLVisOptions &a) { SetTangentVectorGraphicAttributes(a); }
    /// The side direction attributes are the roller axis attributes.
    const ZYLVisOptions &GetSideDirectionGraphicAttributes() const { return GetRollerAxisGraphicAttributes(); }
    void SetSideDirectionGraphicAttributes(const ZYLVisOptions &a) { SetRollerAxisGraphicAttributes(a); }
    const ZYLVisOptions &GetCourseBandGraphicAttributes() const { return GetGraphicAttributes(CourseBandElement); }
    void SetCourseBandGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(CourseBandElement, a); }
    const ZYLVisOptions &GetCourseCentreLineGraphicAttributes() const
    {
        return GetGraphicAttributes(LayingTrajectoryElement);
    }
    void SetCourseCentreLineGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(LayingTrajectoryElement, a); }
    const ZYLVisOptions &GetLinkLineGraphicAttributes() const { return GetGraphicAttributes(LinkLineElement); }
    void SetLinkLineGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(LinkLineElement, a); }
    const ZYLVisOptions &GetLinkingPointGraphicAttributes() const { return GetGraphicAttributes(LinkingPointElement); }
    void SetLinkingPointGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(LinkingPointElement, a); }
    const ZYLVisOptions &GetBreakRangeGraphicAttributes() const { return GetGraphicAttributes(BreakRangeElement); }
    void SetBreakRangeGraphicAttributes(const ZYLVisOptions &a) { SetGraphicAttributes(BreakRangeElement, a); }

    bool operator==(const ZYLTPVisualizationOptions &other) const;
    bool operator!=(const ZYLTPVisualizationOptions &other) const { return !(*this == other); }

private:
    static int CheckElement(GraphicElement element);

    bool m_courseEnabled = true;
    bool m_approachRetractEnabled = true;
    bool m_rollInOutEnabled = true;
    bool m_tipPointEnabled = true;
    bool m_layingTrajectoryEnabled = true;
    bool m_linkingTrajectoriesEnabled = true;
    bool m_linkingPointsEnabled = true;
    bool m_breakRangeEnabled = false;
    VectorsToDisplay m_layingVectors = ToolAxis;
    VectorsToDisplay m_linkingVectors = NoVectors;
    VectorsToDisplay m_linkEndPointsVectors = NoVectors;
    HeadProfilesDisplay m_headProfiles = HeadProfilesAtAddsAndCuts;
    TowEdgesDisplay m_towEdges = OuterTowEdges;
    ShortTowDisplay m_shortTows = AllTowsShortHighlighted;
    double m_vectorLength = 20.0;
    double m_towWidth = 6.35;
    double m_minimumTowLength = 50.0;
    std::array<ZYLVisOptions, NumGraphicElements> m_attributes;
};

Q_DECLARE_METATYPE(ZYLTPVisualizationOptions)
