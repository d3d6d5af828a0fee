// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLTPUnavailableWidget.h"

#include "ZYLCmdCommand.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMetaClassInfo>
#include <QVBoxLayout>

namespace {

// The label is read from the meta-object rather than through `GetLabel()`, because
// translation needs the untranslated source text with its class as context.
QString TranslatedLabel(const ZYLCmdCommand *command) {
    const QMetaObject *meta = command->metaObject();
    const int index = meta->indexOfClassInfo("label");
    const char *label = index >= 0 ? meta->classInfo(index).value() : meta->className();
    return QCoreApplication::translate(meta->className(), label);
}

} // namespace

ZYLTPUnavailableWidget::ZYLTPUnavailableWidget(const ZYLCmdCommand *command, QWidget *parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("ZYLTPUnavailableWidget"));
    auto *layout = new QVBoxLayout(this);

    auto *title = new QLabel(TranslatedLabel(command), this);
    title->setObjectName(QStringLiteral("labelTitle"));
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    layout->addWidget(title);

    auto *message = new QLabel(tr("This editor is not available in this build yet."), this);
    message->setObjectName(QStringLiteral("labelUnavailable"));
    message->setWordWrap(true);
    layout->addWidget(message);
    layout->addStretch(1);
}

ZYLTPUnavailableWidget::~ZYLTPUnavailableWidget() = default;
