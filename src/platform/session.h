#pragma once

namespace velmo {

/// The user's session on this machine.
class Session {
public:
    virtual ~Session() = default;

    /// Asks the system to log the user out. The system asks the user first.
    virtual void requestLogOut() = 0;
};

}  // namespace velmo
