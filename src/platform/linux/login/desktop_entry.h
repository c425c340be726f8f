#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmo {

/// The text of a desktop entry. What is not changed stays as it was written: comments, translations, other
/// groups.
class DesktopEntry {
public:
    explicit DesktopEntry(std::string_view text = {});

    /// In the entry's main group, without the escapes that are for the file alone. Of several the last
    /// counts.
    std::optional<std::string> value(std::string_view key) const;
    bool isTrue(std::string_view key) const;
    bool isFalse(std::string_view key) const;
    void set(std::string_view key, std::string_view value);
    void remove(std::string_view key);
    /// True where there is no other group and no key but these and their translations.
    bool hasOnly(std::span<const std::string_view> keys) const;

    std::string text() const;

private:
    struct Line {
        std::string text;
        /// Empty for all but the keys of the main group.
        std::string key;
    };

    static bool isMainGroup(const Line& line);
    std::vector<Line>::const_iterator endOfMainGroup() const;

    std::vector<Line> lines_;
};

}  // namespace velmo
