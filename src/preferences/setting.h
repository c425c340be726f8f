#pragma once

#include "preferences/published.h"
#include "preferences/setting_storage.h"

namespace velmo {

/// An observable value that is stored under its key on each assignment.
template <typename T>
class Setting {
public:
    Setting(UserDefaults& defaults, std::string key) : defaults_(defaults), key_(std::move(key)) {}

    const T& value() const { return published_.value(); }

    /// Announces the value, takes it, then stores it, in this order and even where it is not new.
    void set(T value) {
        published_.set(std::move(value));
        storeSetting(defaults_, key_, published_.value());
    }

    /// Takes a value that the store already holds.
    void restore(T value) { published_.set(std::move(value)); }

    Publisher<T> publisher() const { return published_.publisher(); }
    const std::string& key() const { return key_; }

private:
    UserDefaults& defaults_;
    std::string key_;
    Published<T> published_;
};

}  // namespace velmo
