#pragma once

#include "runtime.h"

#include <utility>

namespace velmo::macos {

/// A strong reference to an object of any class, or to none: it retains when it is copied and releases when
/// it goes. Messages to none do nothing and give zero.
class Object {
public:
    static constexpr const char* typeEncoding = "@";

    Object() = default;
    Object(const Object& other) : id_(retained(other.id_)) {}
    Object(Object&& other) noexcept : id_(std::exchange(other.id_, nullptr)) {}
    Object& operator=(Object other) noexcept {
        std::swap(id_, other.id_);
        return *this;
    }
    ~Object() { release(id_); }

    /// Takes over a reference that the caller owns.
    template <typename Handle = Object>
    static Handle adopt(Id object) {
        Handle handle;
        static_cast<Object&>(handle).id_ = object;
        return handle;
    }
    /// Takes a reference of its own.
    template <typename Handle = Object>
    static Handle share(Id object) {
        return adopt<Handle>(retained(object));
    }

    Id get() const { return id_; }
    /// Hands the reference over to the caller.
    Id leave() { return std::exchange(id_, nullptr); }
    explicit operator bool() const { return id_ != nullptr; }
    /// Hands the reference over to the autorelease pool: how methods and blocks return what nobody else may
    /// hold.
    Id leaveToPool();
    /// The very same object.
    bool operator==(const Object& other) const { return id_ == other.id_; }

private:
    static Id retained(Id object);
    static void release(Id object);

    Id id_ = nullptr;
};

}  // namespace velmo::macos
