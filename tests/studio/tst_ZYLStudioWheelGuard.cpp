// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioWheelGuard.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QSpontaneKeyEvent>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

class tst_ZYLStudioWheelGuard : public QObject {
    Q_OBJECT
private slots:
    void wheel_data();
    void wheel();
};

void tst_ZYLStudioWheelGuard::wheel_data()
{
    QTest::addColumn<bool>("combo");
    QTest::addColumn<bool>("focused");
    QTest::newRow("spin box without focus scrolls the panel") << false << false;
    QTest::newRow("spin box with focus turns") << false << true;
    QTest::newRow("combo box without focus scrolls the panel") << true << false;
    QTest::newRow("combo box with focus turns") << true << true;
}

void tst_ZYLStudioWheelGuard::wheel()
{
    QFETCH(bool, combo);
    QFETCH(bool, focused);
    ZYLStudioWheelGuard guard;
    qApp->installEventFilter(&guard);
    QScrollArea area;
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    auto *spin = new QSpinBox;
    spin->setValue(5);
    auto *box = new QComboBox;
    box->addItems({QStringLiteral("a"), QStringLiteral("b")});
    QWidget *field = combo ? static_cast<QWidget *>(box) : spin;
    auto *other = new QLineEdit;
    for (QWidget *widget : {static_cast<QWidget *>(spin), static_cast<QWidget *>(box), static_cast<QWidget *>(other)})
        layout->addWidget(widget);
    layout->addSpacing(2000);
    area.setWidget(content);
    area.resize(200, 200);
    area.show();
    QVERIFY(QTest::qWaitForWindowActive(&area));
    // The window gives its first field the focus: the other one takes it where needed.
    QWidget *focus = focused ? field : other;
    focus->setFocus();
    QTRY_VERIFY(focus->hasFocus());

    const QPointF at(field->width() / 2.0, field->height() / 2.0);
    QWheelEvent event(at, field->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    // As from the window system (sendEvent would make it spontaneous no more): only such
    // wheel events give the focus and go on to the parents.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(field, &event);
    // One notch down: the next item, one less.
    QCOMPARE(combo ? box->currentIndex() : spin->value(), combo ? int(focused) : 5 - int(focused));
    QCOMPARE(area.verticalScrollBar()->value() > 0, !focused);
}

QTEST_MAIN(tst_ZYLStudioWheelGuard)
#include "tst_ZYLStudioWheelGuard.moc"
