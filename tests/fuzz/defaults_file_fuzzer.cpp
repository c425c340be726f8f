#include "bytes.h"
#include "linux/defaults/file_user_defaults.h"
#include "platform/linux/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
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

}  // namespace

/// Whatever the file holds, a setting can be stored, and nothing that was a defaults file loses another.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    static const auto file = folder() / "defaults.json";
    static const auto aside = std::filesystem::path(file.string() + ".damaged-1");
    const std::string content(reinterpret_cast<const char*>(data), size);
    std::ofstream(file, std::ios::binary) << content;
    const auto before = nlohmann::json::parse(content, nullptr, false);
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
    std::ifstream stream(file, std::ios::binary);
    const auto after = nlohmann::json::parse(stream, nullptr, false);
    if (!after.is_object() || after.value("stored", false) != true)
        std::abort();
    if (before.is_object()) {
        for (const auto& [key, value] : before.items()) {
            if (key != "stored" && after.at(key) != value)
                std::abort();
        }
    }
    // The file itself is written over the next time.
    std::filesystem::remove(aside);
    return 0;
}
