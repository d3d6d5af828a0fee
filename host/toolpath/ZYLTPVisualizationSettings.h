// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLToolPathExport.h"

#include "ZYLSysSettings.h"

#include <memory>

class ZYLTPVisualizationOptions;

/// The user's global display options of tool paths, persisted in the settings group
/// "ZYLToolPathDisplay": one key per switch, mode and length of `ZYLTPVisualizationOptions`
/// (e.g. "tipPointEnabled", "layingVectors", "towWidth") and one per element's display
/// options ("attributes/<element>", e.g. "attributes/toolAxis", as the text
/// "#rrggbb lineThickness pointSize transparency priority depth"). A key that is missing or
/// does not read cleanly keeps its default; keys equal to the default are not written.
///
/// The options are read when the object is created and again by `Reload()`. Every change
/// of the options (`SetVisualizationOptions`, `Reload`, `RevertToDefaults`) that makes them
/// differ from before emits `OptionsChanged()` once.
class ZYLTOOLPATH_EXPORT ZYLTPVisualizationSettings : public ZYLSysSettings {
    Q_OBJECT

public:
    /// Returns the process-wide settings object.
    static ZYLTPVisualizationSettings *GetInstance();

    ~ZYLTPVisualizationSettings() override;

    /// Fills `options` with the global display options; a null pointer is ignored.
    void GetVisualizationOptions(ZYLTPVisualizationOptions *options) const;
    /// Stores and persists new global display options.
    void SetVisualizationOptions(const ZYLTPVisualizationOptions &options);
    /// Reads the persisted options again.
    void Reload();
    /// Returns to the default options and removes the persisted ones.
    void RevertToDefaults() override;

signals:
    /// Emitted when the global display options have changed.
    void OptionsChanged();

private:
    ZYLTPVisualizationSettings();

    struct Data;
    std::unique_ptr<Data> d;
};
