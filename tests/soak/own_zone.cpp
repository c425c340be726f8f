// A copy of the system's settings, mounted over them for this process and what it starts.

#include "own_zone.h"

#include "child_process.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <fstream>

namespace velmo::desktop {

namespace {

namespace fs = std::filesystem;

constexpr const char* systemSettings = "/etc";

/// Mounts of this process are its own from then on. Whoever is not root needs users of its own for that, too.
bool leaveMounts() {
    if (unshare(CLONE_NEWNS) == 0)
        return true;
    const auto user = std::to_string(geteuid());
    const auto group = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << user << " " << user << " 1";
    std::ofstream("/proc/self/gid_map") << group << " " << group << " 1";
    return true;
}

}  // namespace

OwnZone::OwnZone(const fs::path& folder) {
    const auto copy = folder / "etc";
    // What only others may read is left out.
    outputOf({"cp", "--archive", systemSettings, copy}, {});
    isOwn_ = fs::exists(copy) && leaveMounts() &&
             mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
             mount(copy.c_str(), systemSettings, nullptr, MS_BIND, nullptr) == 0;
}

void OwnZone::set(const std::string& name) const {
    const fs::path link = fs::path(systemSettings) / "localtime";
    const fs::path next = link.string() + ".next";
    fs::remove(next);
    fs::create_symlink("/usr/share/zoneinfo/" + name, next);
    fs::rename(next, link);
}

}  // namespace velmo::desktop
