#include "json_file.h"

#include "linux/defaults/atomic_file.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace velmo {

JsonFile::JsonFile(std::filesystem::path file) : file_(std::move(file)), writable_(!file_.empty()) {}

nlohmann::json JsonFile::read() {
    std::error_code error;
    content_.clear();
    if (!std::filesystem::exists(file_, error)) {
        writable_ = !error && !file_.empty();
        return nlohmann::json::object();
    }
    std::ifstream stream;
    if (std::filesystem::is_regular_file(file_, error))
        stream.open(file_, std::ios::binary);
    writable_ = stream.is_open();
    if (!writable_)
        return nlohmann::json::object();
    content_.assign(std::istreambuf_iterator<char>(stream), {});
    nlohmann::json object = nlohmann::json::parse(content_, nullptr, false);
    if (object.is_object())
        return object;
    writable_ = setAside();
    content_.clear();
    return nlohmann::json::object();
}

nlohmann::json JsonFile::glance() const {
    std::error_code error;
    std::ifstream stream;
    if (std::filesystem::is_regular_file(file_, error))
        stream.open(file_, std::ios::binary);
    nlohmann::json object =
        stream.is_open() ? nlohmann::json::parse(stream, nullptr, false) : nlohmann::json();
    return object.is_object() ? object : nlohmann::json::object();
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
