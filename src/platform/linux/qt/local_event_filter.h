#pragma once

#include "linux/local_events.h"

#include <QObject>

namespace velmo {

/// Shows presses and keys in Qt's windows to the local monitors, before the windows get them.
class LocalEventFilter : public QObject {
public:
    explicit LocalEventFilter(LocalEvents& events) : events_(events) {}

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    LocalEvents& events_;
};

}  // namespace velmo
