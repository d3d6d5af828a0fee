// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathUIExport.h"

#include "ZYLSysSettings.h"

#include <QString>

#include <memory>

/// The user's display choices in the tool path edit environment, persisted under the settings
/// group "ZYLToolPathUI": four switches (surface, ply boundary, machine head, roller) and the
/// view modes of courses, laying points, course links and linking points.
///
/// The property names are the settings keys:
///
/// | Property               | Type    | Default                           |
/// |------------------------|---------|-----------------------------------|
/// | viewSurface            | bool    | false                             |
/// | viewPlyBoundary        | bool    | false                             |
/// | viewMachineHead        | bool    | false                             |
/// | viewRoller             | bool    | false                             |
/// | viewCourseMode         | QString | "ViewCourse"                      |
/// | viewLayingPointsMode   | QString | "ViewLayingPointsWithToolAxis"    |
/// | viewCourseLinksMode    | QString | "ViewCourseLinksWithPointsOnly"   |
/// | viewLinkPointsMode     | QString | "ViewLinkPointsOnly"              |
///
/// A setter stores its value whatever it was before and persists it with `UpdateSetting`;
/// it emits nothing itself (the base class announces `SettingChanged`). A mode is stored as
/// given, also a string that no reader recognises. Writing a property through the
/// meta-object runs its setter, which is how the settings framework reads persisted values
/// back.
///
/// One object per process (`GetInstance`), used on the GUI thread, destroyed when the module
/// is unloaded.
class ZYLTOOLPATHUI_EXPORT ZYLTPEditUISettings : public ZYLSysSettings {
    Q_OBJECT
    Q_PROPERTY(bool viewSurface READ IsViewSurface WRITE SetViewSurface DESIGNABLE true SCRIPTABLE true STORED true)
    Q_PROPERTY(bool viewPlyBoundary READ IsViewPlyBoundary WRITE SetViewPlyBoundary DESIGNABLE true SCRIPTABLE true
                   STORED true)
    Q_PROPERTY(bool viewMachineHead READ IsViewMachineHead WRITE SetViewMachineHead DESIGNABLE true SCRIPTABLE true
                   STORED true)
    Q_PROPERTY(bool viewRoller READ IsViewRoller WRITE SetViewRoller DESIGNABLE true SCRIPTABLE true STORED true)
    Q_PROPERTY(QString viewCourseMode READ GetViewCourseMode WRITE SetViewCourseMode DESIGNABLE true SCRIPTABLE true
                   STORED true)
    Q_PROPERTY(QString viewLayingPointsMode READ GetViewLayingPointsMode WRITE SetViewLayingPointsMode DESIGNABLE
                   true SCRIPTABLE true STORED true)
    Q_PROPERTY(QString viewCourseLinksMode READ GetViewCourseLinksMode WRITE SetViewCourseLinksMode DESIGNABLE true
                   SCRIPTABLE true STORED true)
    Q_PROPERTY(QString viewLinkPointsMode READ GetViewLinkPointsMode WRITE SetViewLinkPointsMode DESIGNABLE true
                   SCRIPTABLE true STORED true)
public:
    /// Returns the settings object, creating it on the first call (thread-safe) with the
    /// group "ZYLToolPathUI" and the persisted values read back into it.
    static ZYLTPEditUISettings *GetInstance();

    ~ZYLTPEditUISettings() override;

    bool IsViewSurface() const;
    bool IsViewPlyBoundary() const;
    bool IsViewMachineHead() const;
    bool IsViewRoller() const;
    QString GetViewCourseMode() const;
    QString GetViewLayingPointsMode() const;
    QString GetViewCourseLinksMode() const;
    QString GetViewLinkPointsMode() const;

    void SetViewSurface(bool view);
    void SetViewPlyBoundary(bool view);
    void SetViewMachineHead(bool view);
    void SetViewRoller(bool view);
    void SetViewCourseMode(const QString &mode);
    void SetViewLayingPointsMode(const QString &mode);
    void SetViewCourseLinksMode(const QString &mode);
    void SetViewLinkPointsMode(const QString &mode);

    /// Puts the defaults of all eight values in place (without persisting them one by one),
    /// then lets the base class remove the persisted values of the group.
    void RevertToDefaults() override;

private:
    /// Creates the object of the settings group `group` with the default values, then reads
    /// the persisted values back.
    explicit ZYLTPEditUISettings(const QByteArray &group);

    struct Data;
    std::unique_ptr<Data> d;
};
