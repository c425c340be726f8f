#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace velmo {

/// A file that holds one JSON object, for people to read, too. It is replaced atomically: whoever reads it,
/// at whatever moment the process dies, finds the old or the new content whole.
class JsonFile {
public:
    explicit JsonFile(std::filesystem::path file);

    /// Empty where there is no file. A file with other content is renamed, never overwritten; one that cannot
    /// be read, or is absurdly large, is left alone and not written to.
    nlohmann::json read();
    /// The same without touching the file, for whoever does not mean to write: another program may be about
    /// to complete it.
    nlohmann::json glance() const;
    /// Does nothing where the file holds this already, and where it cannot be written.
    void write(const nlohmann::json& object);

private:
    /// Absent where there is no regular file that can be read, or an absurdly large one.
    std::optional<std::string> content() const;
    bool setAside() const;

    std::filesystem::path file_;
    /// What the file is known to hold.
    std::string content_;
    bool writable_;
};

}  // namespace velmo
