#include "file_user_defaults.h"

#include "defaults_conversion.h"
#include "linux/process/xdg_folders.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

using Json = nlohmann::json;

constexpr const char* dataMember = "data";
constexpr const char* bytesMember = "bytes";

/// Text from another program may hold anything; the file stays valid all the same.
std::string validText(const std::string& text) {
    const auto isPlain = [](char character) { return character >= ' ' && character <= '~'; };
    if (std::all_of(text.begin(), text.end(), isPlain))
        return text;
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
    : file_(std::move(file)), stored_(file_.read()) {}

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

void FileUserDefaults::write() {
    file_.write(stored_);
}

std::filesystem::path userDefaultsFile() {
    const auto folder = configurationFolder();
    return folder.empty() ? folder : folder / "velmo" / "defaults.json";
}

}  // namespace velmo
