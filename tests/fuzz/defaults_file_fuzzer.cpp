#include "bytes.h"
#include "linux/defaults/file_user_defaults.h"
#include "platform/linux/temporary_folder.h"
#include "require.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using velmo::TemporaryFolder;

/// In memory where the system has such a place. It goes away when the process ends in order.
std::filesystem::path folder() {
    static const std::filesystem::path memory = "/dev/shm";
    static const TemporaryFolder folder(
        std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path());
    return folder.path();
}

void store(const std::string& file, const std::uint8_t* data, std::size_t size) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    velmo::fuzz::require(write(descriptor, data, size) == static_cast<ssize_t>(size));
    close(descriptor);
}

std::string load(const std::string& file) {
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const auto size = lseek(descriptor, 0, SEEK_END);
    velmo::fuzz::require(size >= 0);
    std::string content(static_cast<std::size_t>(size), '\0');
    velmo::fuzz::require(pread(descriptor, content.data(), content.size(), 0) == size);
    close(descriptor);
    return content;
}

}  // namespace

/// Whatever the file holds, a setting can be stored, and nothing that was a defaults file loses another.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    static const std::string file = folder() / "defaults.json";
    static const std::string aside = file + ".damaged-1";
    store(file, data, size);
    const auto before = nlohmann::json::parse(data, data + size, nullptr, false);
    {
        FileUserDefaults defaults(file);
        for (const char* key :
             {"autoRehide", "rehideDelay", "clockFormat", "hotkey", "statusItemOrder", ""}) {
            defaults.boolForKey(key);
            defaults.doubleForKey(key);
            defaults.stringForKey(key);
            defaults.dataForKey(key);
            defaults.stringListForKey(key);
        }
        defaults.setBool(true, "stored");
    }
    const auto after = nlohmann::json::parse(load(file), nullptr, false);
    velmo::fuzz::require(after.is_object() && after.value("stored", false));
    if (access(aside.c_str(), F_OK) == 0) {
        velmo::fuzz::require(load(aside) == std::string(data, data + size));
        unlink(aside.c_str());
    } else {
        velmo::fuzz::require(before.is_object());
        for (const auto& [key, value] : before.items())
            velmo::fuzz::require(key == "stored" || after.at(key) == value);
    }
    return 0;
}
