#include "json_file.h"

#include "linux/defaults/atomic_file.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace velmo {

using Json = nlohmann::json;

JsonFile::JsonFile(std::filesystem::path file) : file_(std::move(file)), writable_(!file_.empty()) {}

Json JsonFile::read() {
    std::error_code error;
    content_.clear();
    if (!std::filesystem::exists(file_, error)) {
        writable_ = !error && !file_.empty();
        return Json::object();
    }
    std::ifstream stream;
    if (std::filesystem::is_regular_file(file_, error))
        stream.open(file_, std::ios::binary);
    writable_ = stream.is_open();
    if (!writable_)
        return Json::object();
    content_.assign(std::istreambuf_iterator<char>(stream), {});
    Json object = Json::parse(content_, nullptr, false);
    if (object.is_object())
        return object;
    writable_ = setAside();
    content_.clear();
    return Json::object();
}

Json JsonFile::glance() const {
    std::error_code error;
    std::ifstream stream;
    if (std::filesystem::is_regular_file(file_, error))
        stream.open(file_, std::ios::binary);
    Json object = stream.is_open() ? Json::parse(stream, nullptr, false) : Json();
    return object.is_object() ? object : Json::object();
}

void JsonFile::write(const Json& object) {
    std::string text = object.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
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
