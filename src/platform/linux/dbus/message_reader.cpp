#include "message_reader.h"

#include "linux/cut_text.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace velmo::dbus {

namespace {

constexpr std::size_t longestText = 16384;
/// Of containers in each other.
constexpr int deepest = 60;
constexpr std::string_view textTypes = "sog";
/// Types whose arrays lie in memory as they are.
constexpr std::string_view fixedTypes = "ybnqiuxtd";
constexpr std::size_t largestFixed = 8;
/// That are read one by one.
constexpr int mostElements = 1 << 19;

}  // namespace

bool MessageReader::check(int result) {
    if (result < 0)
        failed_ = true;
    return result > 0;
}

bool MessageReader::spend() {
    if (--budget_ < 0)
        failed_ = true;
    return !failed_;
}

char MessageReader::next() {
    char type = 0;
    contents_ = nullptr;
    if (failed_ || !check(sd_bus_message_peek_type(message_, &type, &contents_)))
        return 0;
    return type;
}

bool MessageReader::atEnd() {
    return failed_ || sd_bus_message_at_end(message_, 0) != 0;
}

std::optional<std::string_view> MessageReader::readText(char type) {
    const char* value = nullptr;
    if (!spend() || !check(sd_bus_message_read_basic(message_, type, &value)))
        return std::nullopt;
    const std::string_view text = value;
    bytesRead_ += text.size();
    return text;
}

std::optional<std::span<const std::uint8_t>> MessageReader::readArray(char type) {
    const void* data = nullptr;
    std::size_t size = 0;
    if (!spend())
        return std::nullopt;
    const int result = sd_bus_message_read_array(message_, type, &data, &size);
    if (result == -EOPNOTSUPP)
        return readElements(type);
    if (result < 0) {
        failed_ = true;
        return std::nullopt;
    }
    bytesRead_ += size;
    return std::span(static_cast<const std::uint8_t*>(data), size);
}

std::optional<std::span<const std::uint8_t>> MessageReader::readElements(char type) {
    const char contents[] = {type, '\0'};
    if (!check(sd_bus_message_enter_container(message_, 'a', contents)))
        return std::nullopt;
    auto& bytes = copies_.emplace_front();
    std::array<std::uint8_t, largestFixed> element{};
    while (!atEnd()) {
        if (++elementsRead_ > mostElements) {
            abandon();
            return std::nullopt;
        }
        ++bytesRead_;
        if (check(sd_bus_message_read_basic(message_, type, element.data())) && type == 'y')
            bytes.push_back(element.front());
    }
    if (failed_ || !check(sd_bus_message_exit_container(message_)))
        return std::nullopt;
    return bytes;
}

std::optional<std::string> MessageReader::text() {
    const char type = next();
    if (type == 0 || textTypes.find(type) == std::string_view::npos) {
        skip();
        return std::nullopt;
    }
    const auto value = readText(type);
    return value ? std::optional(std::string(cutText(*value, longestText))) : std::nullopt;
}

std::optional<std::int64_t> MessageReader::integer() {
    const char type = next();
    union {
        std::uint8_t byte;
        std::int16_t signedShort;
        std::uint16_t unsignedShort;
        std::int32_t signedNumber;
        std::uint32_t unsignedNumber;
    } value{};
    if (type == 0 || !std::strchr("ynqiu", type)) {
        skip();
        return std::nullopt;
    }
    if (!spend() || !check(sd_bus_message_read_basic(message_, type, &value)))
        return std::nullopt;
    switch (type) {
        case 'y':
            return value.byte;
        case 'n':
            return value.signedShort;
        case 'q':
            return value.unsignedShort;
        case 'i':
            return value.signedNumber;
        default:
            return value.unsignedNumber;
    }
}

std::optional<bool> MessageReader::boolean() {
    if (next() != 'b') {
        skip();
        return std::nullopt;
    }
    int value = 0;
    if (!spend() || !check(sd_bus_message_read_basic(message_, 'b', &value)))
        return std::nullopt;
    return value != 0;
}

std::optional<std::span<const std::uint8_t>> MessageReader::bytes() {
    if (next() != 'a' || std::string_view(contents_) != "y") {
        skip();
        return std::nullopt;
    }
    return readArray('y');
}

bool MessageReader::inside(char type, const std::function<void()>& read) {
    if (next() != type) {
        skip();
        return false;
    }
    // The library keeps what it points to only until it moves on.
    const std::string contents = contents_;
    if (!spend() || ++depth_ > deepest ||
        !check(sd_bus_message_enter_container(message_, type, contents.c_str()))) {
        failed_ = true;
        return false;
    }
    read();
    while (!atEnd())
        skip();
    --depth_;
    if (!failed_)
        check(sd_bus_message_exit_container(message_));
    return true;
}

bool MessageReader::array(const std::function<bool()>& read) {
    return inside('a', [&] {
        while (!atEnd() && spend()) {
            if (!read())
                return;
        }
    });
}

bool MessageReader::structure(const std::function<void()>& read) {
    return inside('r', read);
}

bool MessageReader::variant(const std::function<void()>& read) {
    return inside('v', read);
}

bool MessageReader::dictionary(const std::function<void(const std::string&)>& read) {
    return array([&] {
        return inside('e', [&] {
            const auto key = text();
            if (key)
                variant([&] { read(*key); });
        });
    });
}

void MessageReader::skip() {
    const char type = next();
    if (type == 0) {
        failed_ = true;
        return;
    }
    const std::string_view contents = contents_ ? contents_ : "";
    if (type == 'a' && contents.size() == 1 && fixedTypes.find(contents.front()) != std::string_view::npos) {
        readArray(contents.front());
    } else if (std::strchr("arve", type)) {
        inside(type, [] {});
    } else if (textTypes.find(type) != std::string_view::npos) {
        readText(type);
    } else if (spend()) {
        const char single[] = {type, '\0'};
        check(sd_bus_message_skip(message_, single));
    }
}

}  // namespace velmo::dbus
