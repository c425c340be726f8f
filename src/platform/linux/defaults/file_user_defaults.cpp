#include "file_user_defaults.h"

#include "defaults_conversion.h"
#include "linux/defaults/atomic_file.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

namespace velmo {

namespace {

using Json = nlohmann::json;

constexpr const char* dataMember = "data";
constexpr const char* bytesMember = "bytes";

/// Text from another program may hold anything; the file stays valid all the same.
std::string validText(const std::string& text) {
    return Json::parse(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace)).get<std::string>();
}

struct ToJson {
    Json operator()(bool value) const { return value; }
    Json operator()(double value) const { return value; }
    Json operator()(const std::string& value) const { return validText(value); }
    // Data that is text stays readable.
    Json operator()(const Data& value) const {
        std::string text(value.begin(), value.end());
        if (validText(text) == text)
            return {{dataMember, std::move(text)}};
        return {{bytesMember, value}};
    }
};

std::optional<Data> dataFrom(const Json& value) {
    if (const auto text = value.find(dataMember); text != value.end() && text->is_string()) {
        const auto& content = text->get_ref<const std::string&>();
        return Data(content.begin(), content.end());
    }
    const auto bytes = value.find(bytesMember);
    if (bytes == value.end() || !bytes->is_array())
        return std::nullopt;
    Data data;
    for (const auto& byte : *bytes) {
        if (!byte.is_number_unsigned() || byte.get<std::uint64_t>() > 255)
            return std::nullopt;
        data.push_back(static_cast<std::uint8_t>(byte.get<std::uint64_t>()));
    }
    return data;
}

std::optional<DefaultsValue> valueFrom(const Json& value) {
    if (value.is_boolean())
        return value.get<bool>();
    if (value.is_number())
        return value.get<double>();
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_object()) {
        if (auto data = dataFrom(value))
            return *std::move(data);
    }
    return std::nullopt;
}

}  // namespace

FileUserDefaults::FileUserDefaults(std::filesystem::path file)
    : file_(std::move(file)), stored_(Json::object()) {
    read();
}

void FileUserDefaults::registerDefaults(const std::map<std::string, DefaultsValue>& values) {
    for (const auto& [key, value] : values)
        registered_[key] = value;
}

std::optional<DefaultsValue> FileUserDefaults::find(const std::string& key) const {
    if (const auto stored = stored_.find(key); stored != stored_.end()) {
        if (auto value = valueFrom(*stored))
            return value;
    }
    const auto registered = registered_.find(key);
    return registered == registered_.end() ? std::nullopt : std::optional(registered->second);
}

bool FileUserDefaults::boolForKey(const std::string& key) const {
    const auto value = find(key);
    return value && defaults_conversion::toBool(*value);
}

double FileUserDefaults::doubleForKey(const std::string& key) const {
    const auto value = find(key);
    return value ? defaults_conversion::toDouble(*value) : 0;
}

std::optional<std::string> FileUserDefaults::stringForKey(const std::string& key) const {
    const auto value = find(key);
    return value ? defaults_conversion::toString(*value) : std::nullopt;
}

std::optional<Data> FileUserDefaults::dataForKey(const std::string& key) const {
    const auto value = find(key);
    const auto* data = value ? std::get_if<Data>(&*value) : nullptr;
    return data ? std::optional(*data) : std::nullopt;
}

void FileUserDefaults::setBool(bool value, const std::string& key) {
    setObject(value, key);
}

void FileUserDefaults::setDouble(double value, const std::string& key) {
    setObject(value, key);
}

void FileUserDefaults::setObject(const DefaultsValue& value, const std::string& key) {
    stored_[key] = std::visit(ToJson{}, value);
    write();
}

void FileUserDefaults::removeObject(const std::string& key) {
    if (stored_.erase(key) > 0)
        write();
}

std::vector<std::string> FileUserDefaults::stringListForKey(const std::string& key) const {
    const auto stored = stored_.find(key);
    if (stored == stored_.end() || !stored->is_array())
        return {};
    std::vector<std::string> list;
    for (const auto& entry : *stored) {
        if (entry.is_string())
            list.push_back(entry.get<std::string>());
    }
    return list;
}

void FileUserDefaults::setStringList(const std::vector<std::string>& list, const std::string& key) {
    Json texts = Json::array();
    for (const auto& text : list)
        texts.push_back(validText(text));
    stored_[key] = std::move(texts);
    write();
}

void FileUserDefaults::read() {
    std::error_code error;
    if (!std::filesystem::exists(file_, error)) {
        writable_ = !error && !file_.empty();
        return;
    }
    std::ifstream stream(file_, std::ios::binary);
    if (!stream || !std::filesystem::is_regular_file(file_, error)) {
        writable_ = false;
        return;
    }
    written_.assign(std::istreambuf_iterator<char>(stream), {});
    Json content = Json::parse(written_, nullptr, false);
    if (content.is_object()) {
        stored_ = std::move(content);
    } else {
        writable_ = setAside();
        written_.clear();
    }
}

bool FileUserDefaults::setAside() const {
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

void FileUserDefaults::write() {
    std::string text = stored_.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    if (!writable_ || text == written_)
        return;
    if (replaceFile(file_, text))
        written_ = std::move(text);
}

std::filesystem::path userDefaultsFile() {
    std::filesystem::path folder;
    if (const char* configured = std::getenv("XDG_CONFIG_HOME"); configured && *configured == '/')
        folder = configured;
    else if (const char* home = std::getenv("HOME"); home && *home == '/')
        folder = std::filesystem::path(home) / ".config";
    return folder.empty() ? folder : folder / "velmo" / "defaults.json";
}

}  // namespace velmo
