#pragma once

#include <filesystem>
#include <string>

namespace velmo::desktop {

/// The system's time zone as this process and its programs see it, which can be another one than the
/// machine's.
class OwnZone {
public:
    /// The folder exists, and keeps a copy of the system's settings. Before this process has a second thread.
    explicit OwnZone(const std::filesystem::path& folder);

    /// False where the system allows no such thing: the zone stays the machine's then.
    bool isOwn() const { return isOwn_; }
    /// As the desktop's settings do it: at once for all programs.
    void set(const std::string& name) const;

private:
    bool isOwn_ = false;
};

}  // namespace velmo::desktop
