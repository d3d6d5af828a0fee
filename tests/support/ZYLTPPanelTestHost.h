// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include <QByteArray>
#include <QDialogButtonBox>
#include <QItemSelectionModel>
#include <QList>
#include <Qt>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

class QAbstractButton;
class QAbstractItemView;
class QObject;
class ZYLCmdDialogCommand;
class ZYLEditTPGraphicsMgr;
class ZYLFeatContainer;
class ZYLMathPoint;
class ZYLStudioSession;
class ZYLTPProgram;
class ZYLVisEnvironment;

/// The host of a panel test, started as the studio starts: the session loads the module and
/// the graphics bridge at run time, opens a program and enters its edit environment. Tests
/// then trigger an action, find the panel's controls by their object names, pick in the scene
/// through the environment's mouse entry points and press the frame's standard buttons.
class ZYLTPPanelTestHost {
public:
    ZYLTPPanelTestHost();
    ~ZYLTPPanelTestHost();

    /// Starts the host; false with the reason in `GetError()` when it cannot.
    bool Start(QObject *parent = nullptr);
    /// Opens the embedded demo ply (or the program saved in `fileName`) and enters its edit
    /// environment, with an empty undo history.
    bool OpenDemo();
    bool Open(const QString &fileName);
    /// Saves `program` into a temporary file and opens that; the session owns the loaded copy.
    bool Open(const ZYLTPProgram &program);
    QString GetError() const;

    ZYLStudioSession *GetSession() const;
    ZYLTPProgram *GetProgram() const;
    ZYLFeatContainer *GetContainer() const;
    ZYLEditTPGraphicsMgr *GetManager() const;
    ZYLVisEnvironment *GetScene() const;

    /// Triggers the action `key` ("ZYLTPEditCourseCmd.Edit") and returns the running dialog
    /// command, or null when none runs afterwards.
    ZYLCmdDialogCommand *Trigger(const QByteArray &key);
    /// Returns the running command's panel, or null.
    QWidget *GetPanel() const;
    /// Returns the panel's child `name` of class `T`; ends the test run when there is none.
    template<class T = QWidget> T *Find(const char *name) const {
        T *child = GetPanel() ? GetPanel()->findChild<T *>(QLatin1String(name)) : nullptr;
        if (!child)
            qFatal("The panel has no %s", name);
        return child;
    }
    /// Returns the frame's standard button of the running command, or null.
    QAbstractButton *GetButton(QDialogButtonBox::StandardButton button) const;
    /// Clicks the standard button; false when it is missing or disabled.
    bool Press(QDialogButtonBox::StandardButton button);

    /// Moves the mouse to, or clicks at, a ray straight down the scene's z axis through
    /// `point` (from 10 m above it), with a pick radius of `radius` millimetres.
    void MoveTo(const ZYLMathPoint &point, double radius = 1.0);
    void ClickAt(const ZYLMathPoint &point, double radius = 1.0, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Returns the program's file bytes as they would be saved now.
    QByteArray Serialize() const;

    /// Returns the rows selected in `view`, in ascending order.
    static QList<int> SelectedRows(const QAbstractItemView *view);
    /// Clears the selection of `view`, then applies `flags` to each of `rows` in turn.
    static void Select(
        QAbstractItemView *view, const QList<int> &rows,
        QItemSelectionModel::SelectionFlags flags = QItemSelectionModel::Select | QItemSelectionModel::Rows);

    /// Runs `action`, answering with OK every message box it shows, and returns their texts
    /// in the order they were shown.
    static QStringList AnswerMessageBoxes(const std::function<void()> &action);

private:
    struct Data;
    std::unique_ptr<Data> d;
};
