#pragma once

#include "linux/event_loop/hosted_loop.h"

#include <QObject>
#include <QSocketNotifier>

#include <functional>

namespace velmo {

/// Runs the program's own loop inside Qt's.
class QtLoop : public QObject {
public:
    explicit QtLoop(HostedLoop& hosted);

    void runWhile(const std::function<bool()>& condition);

private:
    void beforeSleep();

    HostedLoop& hosted_;
    QSocketNotifier notifier_;
};

}  // namespace velmo
