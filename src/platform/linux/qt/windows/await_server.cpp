#include "await_server.h"

#include <QCursor>

namespace velmo {

void awaitServer() {
    // Any question does.
    QCursor::pos();
}

}  // namespace velmo
