// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLSystemExport.h"

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

class QWidget;

/// The host's images: small SVG glyphs shipped in the library's Qt resources.
///
/// Images live at ":/zyl/images/<name>.svg". `GetImage` renders one at 24x24 (cached); a
/// name without an image gives a visible placeholder (a magenta square with "?") and a debug
/// line, never a null pixmap.
///
/// The icons the panels ask `QIcon::fromTheme` for are also shipped as the Qt icon theme
/// "zyl" (":/icons/zyl/index.theme" with scalable SVGs); `InstallIconTheme` makes it the
/// current theme and keeps the theme found before as the fallback, so standard icon names
/// still come from the desktop. The application calls it once at start.
///
/// Style sheet placeholders are replaced with "url(:/zyl/images/<name>.svg)"; a placeholder
/// may stand alone ("image: @@@checked-image@@@;") or already sit inside "url(...)".
/// Needs a QGuiApplication for pixmaps; widgets need a QApplication.
class ZYLSYSTEM_EXPORT ZYLSysResourceManager {
public:
    ZYLSysResourceManager() = delete;

    /// Returns the image rendered at size x size pixels, or the placeholder.
    static QPixmap GetImage(const QString &name, int size = 24);
    /// Returns the image as a scalable icon, or the placeholder.
    static QIcon GetIcon(const QString &name);
    /// Returns whether an image of the name is shipped.
    static bool HasImage(const QString &name);
    /// Returns the resource path of the image, or an empty string.
    static QString GetImagePath(const QString &name);
    /// Returns the names of all shipped images (without the placeholder).
    static QStringList GetImageNames();
    /// Returns the placeholder image rendered at size x size pixels.
    static QPixmap GetPlaceholderImage(int size = 24);

    /// Replaces every occurrence of the placeholder in the widget's style sheet with a resource
    /// URL of the image (the placeholder image, with a debug line, for an unknown name). A null
    /// widget or an empty placeholder is ignored with a warning.
    static void ResolveStyleSheetImage(QWidget *widget, const QString &placeholder, const QString &image);
    /// Resolves "@@@unchecked-image@@@" to "button-collapse-right" and "@@@checked-image@@@"
    /// to "button-collapse-left" in the widget's style sheet.
    static void ResolveUpDownImagesOfStyleSheet(QWidget *widget);

    /// Makes the "zyl" icon theme current (see the class description). Returns false when the
    /// theme is not found in the resources.
    static bool InstallIconTheme();
    /// Returns "zyl".
    static QString GetIconThemeName();
};
