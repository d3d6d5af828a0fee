// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QDialog>

#include <memory>

/// The studio's guide (the project's README with its pictures, built into the program) in a
/// window of its own beside the main window, opened at a section: Help > User Guide opens it
/// at the top, the Help button of a command's panel at the section on that command.
class ZYLStudioHelpBrowser : public QDialog {
    Q_OBJECT
public:
    explicit ZYLStudioHelpBrowser(QWidget *parent = nullptr);
    ~ZYLStudioHelpBrowser() override;

    /// Shows and raises the window, scrolled to the heading whose text is `heading`; to the
    /// top when the guide has no such heading.
    void ShowSection(const QString &heading);
    /// Returns the heading at which the window was last opened, empty for the top.
    QString GetShownSection() const;

    /// Returns the heading of the guide's section on the command of class `className`, or
    /// that of the tour for a command the guide has no section on.
    static QString GetCommandSection(const char *className);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
