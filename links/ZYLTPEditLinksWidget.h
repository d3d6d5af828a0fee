// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#pragma once

#include "ZYLVisObject.h"

#include <QSet>
#include <QWidget>

#include <memory>

class QItemSelection;

/// The panel of the "Edit Links" command: the course-to-course links of the program as rows
/// "Link.%1" in laying order (approach and retract links left out), kept in step with the
/// 3-D selection both ways, and the off-part motion of the selected links.
///
/// Choosing a motion model replaces every selected link whose model differs by a new link of
/// that model between the same two courses; its row keeps its place and carries the new link.
/// Rapid approach and retract distances apply to the selected straight links when a field is
/// left; a distance that is not greater than 0 is refused with a warning and the link's value
/// is put back. The point detail reaches the links only through `ApplyPointsDetail`, which the
/// command calls when the user accepts.
///
/// The panel works on the program, the environment and the selection of the graphics
/// manager's edit environment. GUI thread only.
class ZYLTPEditLinksWidget : public QWidget {
    Q_OBJECT
public:
    explicit ZYLTPEditLinksWidget(QWidget *parent = nullptr);
    ~ZYLTPEditLinksWidget() override;

    /// Sets the point detail chosen in the panel on every link selected in the list now.
    void ApplyPointsDetail();
    /// Stops following the 3-D selection and empties the list, so that nothing reads the
    /// listed links again (a rollback may have deleted the links a model change made).
    void Detach();

public slots:
    void OnSelectAllButtonClicked();
    void OnDeselectAllButtonClicked();
    void OnVisualizationSelectionChanged(const QSet<ZYLVisObject *> &selected, const QSet<ZYLVisObject *> &deselected);
    void OnLinkListSelectionChanged(const QItemSelection &selected, const QItemSelection &deselected);
    void OnValueChanged();
    void OffPartMotionModelChanged();

private:
    void setupConnections();

    struct Data;
    std::shared_ptr<Data> d;
};
