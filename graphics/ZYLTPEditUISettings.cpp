// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPEditUISettings.h"

struct ZYLTPEditUISettings::Data {
    bool viewSurface = false;
    bool viewPlyBoundary = false;
    bool viewMachineHead = false;
    bool viewRoller = false;
    QString viewCourseMode = QStringLiteral("ViewCourse");
    QString viewLayingPointsMode = QStringLiteral("ViewLayingPointsWithToolAxis");
    QString viewCourseLinksMode = QStringLiteral("ViewCourseLinksWithPointsOnly");
    QString viewLinkPointsMode = QStringLiteral("ViewLinkPointsOnly");
};

ZYLTPEditUISettings *ZYLTPEditUISettings::GetInstance() {
    static ZYLTPEditUISettings instance(QByteArrayLiteral("ZYLToolPathUI"));
    return &instance;
}

ZYLTPEditUISettings::ZYLTPEditUISettings(const QByteArray &group)
    : ZYLSysSettings(group), d(std::make_unique<Data>()) {
    // The base can only queue the read-back for later, when it can see these properties;
    // readers such as the graphics manager need the user's values from the first call on.
    Restore();
}

ZYLTPEditUISettings::~ZYLTPEditUISettings() = default;

bool ZYLTPEditUISettings::IsViewSurface() const {
    return d->viewSurface;
}

bool ZYLTPEditUISettings::IsViewPlyBoundary() const {
    return d->viewPlyBoundary;
}

bool ZYLTPEditUISettings::IsViewMachineHead() const {
    return d->viewMachineHead;
}

bool ZYLTPEditUISettings::IsViewRoller() const {
    return d->viewRoller;
}

QString ZYLTPEditUISettings::GetViewCourseMode() const {
    return d->viewCourseMode;
}

QString ZYLTPEditUISettings::GetViewLayingPointsMode() const {
    return d->viewLayingPointsMode;
}

QString ZYLTPEditUISettings::GetViewCourseLinksMode() const {
    return d->viewCourseLinksMode;
}

QString ZYLTPEditUISettings::GetViewLinkPointsMode() const {
    return d->viewLinkPointsMode;
}

// The setters persist even an unchanged value: a view command's click is the user's explicit
// choice, and the settings framework announces every write.
void ZYLTPEditUISettings::SetViewSurface(bool view) {
    d->viewSurface = view;
    UpdateSetting(QByteArrayLiteral("viewSurface"), view);
}

void ZYLTPEditUISettings::SetViewPlyBoundary(bool view) {
    d->viewPlyBoundary = view;
    UpdateSetting(QByteArrayLiteral("viewPlyBoundary"), view);
}

void ZYLTPEditUISettings::SetViewMachineHead(bool view) {
    d->viewMachineHead = view;
    UpdateSetting(QByteArrayLiteral("viewMachineHead"), view);
}

void ZYLTPEditUISettings::SetViewRoller(bool view) {
    d->viewRoller = view;
    UpdateSetting(QByteArrayLiteral("viewRoller"), view);
}

void ZYLTPEditUISettings::SetViewCourseMode(const QString &mode) {
    d->viewCourseMode = mode;
    UpdateSetting(QByteArrayLiteral("viewCourseMode"), mode);
}

void ZYLTPEditUISettings::SetViewLayingPointsMode(const QString &mode) {
    d->viewLayingPointsMode = mode;
    UpdateSetting(QByteArrayLiteral("viewLayingPointsMode"), mode);
}

void ZYLTPEditUISettings::SetViewCourseLinksMode(const QString &mode) {
    d->viewCourseLinksMode = mode;
    UpdateSetting(QByteArrayLiteral("viewCourseLinksMode"), mode);
}

void ZYLTPEditUISettings::SetViewLinkPointsMode(const QString &mode) {
    d->viewLinkPointsMode = mode;
    UpdateSetting(QByteArrayLiteral("viewLinkPointsMode"), mode);
}

void ZYLTPEditUISettings::RevertToDefaults() {
    // The defaults go in place first so that whoever reacts to the base's announcement reads
    // them; the base then drops the persisted values, which makes writing them one by one
    // unnecessary.
    d = std::make_unique<Data>();
    ZYLSysSettings::RevertToDefaults();
}
