#include "qt_loop.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>

namespace velmo {

QtLoop::QtLoop(HostedLoop& hosted) : hosted_(hosted), notifier_(hosted.descriptor(), QSocketNotifier::Read) {
    connect(&notifier_, &QSocketNotifier::activated, this, [this] { hosted_.turn(); });
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { beforeSleep(); });
}

void QtLoop::beforeSleep() {
    // An event in Qt's own queue keeps it awake.
    if (!hosted_.prepareToSleep())
        QMetaObject::invokeMethod(
            this, [this] { hosted_.turn(); }, Qt::QueuedConnection);
}

void QtLoop::runWhile(const std::function<bool()>& condition) {
    QEventLoop loop;
    QObject check;
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &check, [&] {
        if (!condition())
            loop.quit();
    });
    // What was posted before Qt was loaded does not wait for Qt to block.
    hosted_.turn();
    if (condition())
        loop.exec();
}

}  // namespace velmo
