// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLMathPoint.h"

#include <QList>

#include <utility>

class QObject;
class ZYLFeatContainer;
class ZYLFeatGeometry;
class ZYLFeatObject;
class ZYLGeoAssembledCurveOnSurface;
class ZYLTPProgram;
class ZYLVisEnvironment;

/// The session's view of the host's graphics manager, which lives in the bridge library
/// (it derives from the module's exported manager, so it links the module, which the session
/// must not do). The bridge library exports one C function, named `FactoryName`, that
/// returns a new bridge owned by the caller; the bridge creates the host's manager and
/// deletes it with itself.
///
/// The interface names no type of the module: the manager is handed out as a `QObject`,
/// which code that links the module casts to `ZYLEditTPGraphicsMgr`. It is defined
/// entirely in this header, so that neither library links the other for it.
class ZYLStudioGraphicsBridge {
public:
    /// Collision points of one resource: centre in the tool frame and radius.
    using CollisionPoints = QList<std::pair<ZYLMathPoint, double>>;

    /// What the host hands the manager when it enters the edit environment.
    struct EditContext {
        /// The scene of the edit environment; the manager takes ownership.
        ZYLVisEnvironment *environment = nullptr;
        const ZYLTPProgram *program = nullptr;
        const ZYLFeatObject *feature = nullptr;
        QList<const ZYLFeatGeometry *> surfaces;
        QList<ZYLGeoAssembledCurveOnSurface *> plyBoundaries;
        /// The container whose provider draws the machine head, or null.
        ZYLFeatContainer *head = nullptr;
        /// (roller id, container whose provider draws the roller), in roller order.
        QList<std::pair<int, ZYLFeatContainer *>> rollers;
        QList<std::pair<int, CollisionPoints>> headCollisionPoints;
        QList<std::pair<int, CollisionPoints>> rollerCollisionPoints;
        bool layupDirection = false;
        bool feedTowsIndividually = true;
        bool feedTowsAtSeparateRates = false;
    };

    /// The name of the bridge library's factory function, of type `Factory`.
    static constexpr char FactoryName[] = "ZYLCreateStudioGraphicsBridge";
    using Factory = ZYLStudioGraphicsBridge *(*)();

    /// Deletes the manager.
    virtual ~ZYLStudioGraphicsBridge() = default;

    /// Returns the manager.
    virtual QObject *GetManager() const = 0;
    /// Hands the manager the context, enters the edit environment and builds its graphics
    /// with the current view settings.
    virtual void EnterEditEnvironment(const EditContext &context) = 0;
    /// Removes the tool path graphics and leaves the edit environment, which deletes the
    /// environment. Nothing when not entered.
    virtual void LeaveEditEnvironment() = 0;
    /// Returns the manager's edit environment, or null.
    virtual ZYLVisEnvironment *GetEditEnvironment() const = 0;
};
