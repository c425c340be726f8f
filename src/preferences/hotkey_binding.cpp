#include "preferences/hotkey_binding.h"

#include "preferences/json_reader.h"
#include "preferences/utf8.h"

#include <limits>
#include <string_view>

namespace velmo {

namespace {

void appendEscaped(std::string& json, char character) {
    constexpr std::string_view hexDigits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(character);
    switch (character) {
        case '"':
        case '\\':
        case '/':
            json += '\\';
            json += character;
            return;
        case '\b':
            json += "\\b";
            return;
        case '\f':
            json += "\\f";
            return;
        case '\n':
            json += "\\n";
            return;
        case '\r':
            json += "\\r";
            return;
        case '\t':
            json += "\\t";
            return;
        default:
            break;
    }
    if (byte < 0x20) {
        json += "\\u00";
        json += hexDigits[byte >> 4U];
        json += hexDigits[byte & 0xFU];
    } else {
        json += character;
    }
}

}  // namespace

std::optional<Data> encodeHotkeyBinding(const HotkeyBinding& binding) {
    if (!utf8::isValid(binding.display))
        return std::nullopt;
    std::string json = R"({"keyCode":)" + std::to_string(binding.keyCode) + R"(,"modifiers":)" +
                       std::to_string(binding.modifiers) + R"(,"display":")";
    for (const char character : binding.display)
        appendEscaped(json, character);
    json += "\"}";
    return Data(json.begin(), json.end());
}

std::optional<HotkeyBinding> decodeHotkeyBinding(const Data& json) {
    const auto members = readJsonObject(std::string(json.begin(), json.end()));
    if (!members)
        return std::nullopt;
    const auto member = [&members](const char* name) {
        const auto found = members->find(name);
        return found != members->end() ? &found->second : nullptr;
    };
    const JsonValue* keyCode = member("keyCode");
    const JsonValue* modifiers = member("modifiers");
    const JsonValue* display = member("display");
    if (keyCode == nullptr || modifiers == nullptr || display == nullptr)
        return std::nullopt;
    const auto code = keyCode->asUnsigned(std::numeric_limits<std::uint16_t>::max());
    const auto flags = modifiers->asUnsigned(std::numeric_limits<std::uint64_t>::max());
    const std::string* text = display->asString();
    if (!code || !flags || text == nullptr)
        return std::nullopt;
    return HotkeyBinding{static_cast<std::uint16_t>(*code), *flags, *text};
}

}  // namespace velmo
