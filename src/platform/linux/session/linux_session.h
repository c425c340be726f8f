#pragma once

#include "linux/dbus/bus.h"
#include "linux/registration.h"
#include "linux/toolkit/confirmation.h"
#include "process_info.h"
#include "session.h"

#include <functional>
#include <memory>

namespace velmo {

/// The session of whichever desktop runs.
class LinuxSession : public Session {
public:
    /// Asks the user, and does it where the answer is yes.
    using Confirm =
        std::function<void(const Confirmation& confirmation, const std::function<void()>& action)>;

    /// The session's bus. Null while there is none.
    using FindBus = std::function<std::shared_ptr<dbus::Bus>()>;

    /// `confirm` asks where no desktop does.
    LinuxSession(const ProcessInfo& process, FindBus findBus, Confirm confirm);

    /// Has the desktop's own session manager ask the user. Where there is none, we ask, and the login manager
    /// ends the session. Where there is none of that, either, nothing happens.
    void requestLogOut() override;

private:
    void confirmOurselves();
    /// False where nothing can be asked.
    bool askPlasma();

    const ProcessInfo& process_;
    FindBus findBus_;
    Confirm confirm_;
    Registration question_;
};

}  // namespace velmo
