#pragma once

#include "session.h"

namespace velmo {

class SimulatedSession : public Session {
public:
    void requestLogOut() override { ++logOutRequests_; }

    int logOutRequests() const { return logOutRequests_; }

private:
    int logOutRequests_ = 0;
};

}  // namespace velmo
