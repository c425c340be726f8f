#pragma once

#include <QtTest/qtestspontaneevent.h>
#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

namespace velmo {

/// In eighths of a degree; what comes from the user goes on to the parents of those who do not want it.
inline void turnWheel(QWidget& widget, const QPoint& angle) {
    const QPoint middle = widget.rect().center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), {}, angle, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&widget, &event);
    QApplication::processEvents();
}

}  // namespace velmo
