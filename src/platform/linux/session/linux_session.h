#pragma once

#include "linux/toolkit/confirmation.h"
#include "process_info.h"
#include "session.h"

#include <functional>

namespace velmo {

/// The session of whichever desktop runs.
class LinuxSession : public Session {
public:
    /// Asks the user, and does it where the answer is yes.
    using Confirm =
        std::function<void(const Confirmation& confirmation, const std::function<void()>& action)>;

    /// `confirm` asks where no desktop does.
    LinuxSession(const ProcessInfo& process, Confirm confirm);

    /// Has the desktop's own session manager ask the user. Where there is none, we ask, and the login manager
    /// ends the session. Where there is none of that, either, nothing happens.
    void requestLogOut() override;

private:
    const ProcessInfo& process_;
    Confirm confirm_;
};

}  // namespace velmo
