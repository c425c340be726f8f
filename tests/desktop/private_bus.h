#pragma once

#include "child_process.h"

#include <filesystem>
#include <optional>
#include <string>

namespace velmo::desktop {

/// A session bus of a test's own, with the limits of a usual one. It starts the services whose files lie in
/// the folder `services` beside its own.
class PrivateBus {
public:
    /// Its files go into the folder, which exists. The services find the environment.
    explicit PrivateBus(const std::filesystem::path& folder, Environment environment = {});

    /// Starts it, and returns once programs can connect.
    void start();
    void stop() { daemon_.reset(); }
    /// Of the daemon while it runs.
    pid_t id() const { return daemon_->id(); }
    std::string address() const { return "unix:path=" + socket_.string(); }

private:
    Environment environment_;
    std::filesystem::path configuration_;
    std::filesystem::path socket_;
    std::optional<ChildProcess> daemon_;
};

}  // namespace velmo::desktop
