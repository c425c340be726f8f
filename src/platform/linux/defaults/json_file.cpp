#include "json_file.h"

#include "linux/defaults/atomic_file.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace velmo {

namespace {

/// No file of ours comes near to either. What is deeper could be read, and not be written again.
constexpr std::uintmax_t largestJsonFile = 16 << 20;
constexpr int deepestJson = 100;

/// Anything but an object where the text holds none, or one that is too deep.
nlohmann::json parseJson(const std::string& text) {
    bool isTooDeep = false;
    const auto look = [&](int depth, auto /*event*/, const auto& /*value*/) {
        isTooDeep = isTooDeep || depth > deepestJson;
        return !isTooDeep;
    };
    auto value = nlohmann::json::parse(text, look, false);
    return isTooDeep ? nlohmann::json() : value;
}

}  // namespace

JsonFile::JsonFile(std::filesystem::path file) : file_(std::move(file)), writable_(!file_.empty()) {}

nlohmann::json JsonFile::read() {
    std::error_code error;
    content_.clear();
    if (!std::filesystem::exists(file_, error)) {
        writable_ = !error && !file_.empty();
        return nlohmann::json::object();
    }
    auto text = content();
    writable_ = text.has_value();
    if (!writable_)
        return nlohmann::json::object();
    content_ = *std::move(text);
    nlohmann::json object = parseJson(content_);
    if (object.is_object())
        return object;
    writable_ = setAside();
    content_.clear();
    return nlohmann::json::object();
}

nlohmann::json JsonFile::glance() const {
    nlohmann::json object = parseJson(content().value_or(""));
    return object.is_object() ? object : nlohmann::json::object();
}

std::optional<std::string> JsonFile::content() const {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file_, error) ||
        std::filesystem::file_size(file_, error) > largestJsonFile)
        return std::nullopt;
    std::ifstream stream(file_, std::ios::binary);
    if (!stream)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

void JsonFile::write(const nlohmann::json& object) {
    std::string text = object.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
    if (!writable_ || text == content_)
        return;
    if (!replaceFile(file_, text))
        content_ = std::move(text);
}

bool JsonFile::setAside() const {
    std::error_code error;
    for (int number = 1; number < 1000; ++number) {
        auto aside = file_;
        aside += ".damaged-" + std::to_string(number);
        if (std::filesystem::exists(aside, error))
            continue;
        std::filesystem::rename(file_, aside, error);
        return !error;
    }
    return false;
}

}  // namespace velmo
