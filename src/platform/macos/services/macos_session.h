#pragma once

#include "session.h"

namespace velmo::macos {

class MacosSession : public Session {
public:
    /// Has the system ask the user, once the user has allowed that other applications are asked.
    void requestLogOut() override;
};

}  // namespace velmo::macos
