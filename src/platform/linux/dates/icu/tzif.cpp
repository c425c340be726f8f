#include "tzif.h"

#include <algorithm>
#include <string_view>

namespace velmo {

namespace {

constexpr std::string_view magic = "TZif";
constexpr std::size_t headerSize = 44;
constexpr std::size_t firstCount = 20;
constexpr std::size_t typeSize = 6;
/// No calendar goes farther; files name such times where they mean that something has always been so.
constexpr std::int64_t farthestTime = 100'000LL * 366 * 86400;

/// Numbers are big-endian. The caller sees to the bounds.
std::int64_t number(std::string_view bytes, std::size_t place, std::size_t size) {
    // The sign is in the first byte.
    const bool isNegative = (static_cast<unsigned char>(bytes[place]) & 0x80) != 0;
    std::uint64_t value = isNegative ? ~std::uint64_t{0} : 0;
    for (std::size_t index = 0; index < size; ++index)
        value = value << 8 | static_cast<unsigned char>(bytes[place + index]);
    return static_cast<std::int64_t>(value);
}

struct Header {
    std::size_t utIndicators;
    std::size_t standardIndicators;
    std::size_t leapSeconds;
    std::size_t transitions;
    std::size_t types;
    std::size_t characters;

    std::size_t bodySize(std::size_t timeSize) const {
        return transitions * (timeSize + 1) + types * typeSize + characters + leapSeconds * (timeSize + 4) +
               standardIndicators + utIndicators;
    }
};

std::optional<Header> readHeader(std::string_view bytes) {
    if (bytes.size() < headerSize || !bytes.starts_with(magic))
        return std::nullopt;
    std::size_t counts[6] = {};
    for (std::size_t index = 0; index < std::size(counts); ++index) {
        const auto count = number(bytes, firstCount + 4 * index, 4);
        if (count < 0 || static_cast<std::size_t>(count) > bytes.size())
            return std::nullopt;
        counts[index] = static_cast<std::size_t>(count);
    }
    return Header{counts[0], counts[1], counts[2], counts[3], counts[4], counts[5]};
}

/// `body` has the size that the header tells.
std::optional<TzifZone> readBody(std::string_view body, const Header& header, std::size_t timeSize) {
    TzifZone zone;
    const std::size_t indices = header.transitions * timeSize;
    const std::size_t types = indices + header.transitions;
    const std::string_view names = body.substr(types + header.types * typeSize, header.characters);
    for (std::size_t index = 0; index < header.types; ++index) {
        const std::size_t place = types + index * typeSize;
        const auto name = static_cast<unsigned char>(body[place + 5]);
        if (name >= names.size())
            return std::nullopt;
        const auto rest = names.substr(name);
        zone.types.push_back({static_cast<int>(number(body, place, 4)), body[place + 4] != 0,
                              std::string(rest.substr(0, rest.find('\0')))});
    }
    for (std::size_t index = 0; index < header.transitions; ++index) {
        const auto type = static_cast<unsigned char>(body[indices + index]);
        if (type >= header.types)
            return std::nullopt;
        const auto time = std::clamp(number(body, index * timeSize, timeSize), -farthestTime, farthestTime);
        zone.transitions.push_back({time, type});
    }
    const bool isOrdered =
        std::is_sorted(zone.transitions.begin(), zone.transitions.end(),
                       [](const auto& one, const auto& other) { return one.time < other.time; });
    const bool isPlausible = std::all_of(zone.types.begin(), zone.types.end(),
                                         [](const auto& type) { return type.isPlausible(); });
    if (zone.types.empty() || !isPlausible || !isOrdered)
        return std::nullopt;
    return zone;
}

}  // namespace

std::optional<TzifZone> parseTzif(const std::string& content) {
    constexpr std::size_t shortTime = 4;
    constexpr std::size_t longTime = 8;
    constexpr std::size_t versionPlace = 4;
    std::string_view rest = content;
    auto header = readHeader(rest);
    std::size_t timeSize = shortTime;
    if (header && rest[versionPlace] != '\0') {
        // The same once more, with longer times.
        rest.remove_prefix(std::min(rest.size(), headerSize + header->bodySize(shortTime)));
        header = readHeader(rest);
        timeSize = longTime;
    }
    if (!header || rest.size() - headerSize < header->bodySize(timeSize))
        return std::nullopt;
    rest.remove_prefix(headerSize);
    auto zone = readBody(rest.substr(0, header->bodySize(timeSize)), *header, timeSize);
    rest.remove_prefix(header->bodySize(timeSize));
    if (zone && rest.starts_with('\n'))
        zone->rules = rest.substr(1, rest.find('\n', 1) - 1);
    return zone;
}

}  // namespace velmo
