#pragma once

#include "message.h"

namespace velmo::macos {

/// Base of the handle `Derived`, which holds objects of the class `name`. Its members send messages to them:
///
///     class NSTimer : public ClassOf<NSTimer, "NSTimer", NSObject> {
///     public:
///         bool isValid() const { return send<bool, "isValid">(); }
///     };
template <typename Derived, FixedString name, typename Base>
class ClassOf : public Base {
public:
    static constexpr auto className = name;

    static Id classObject() { return reinterpret_cast<Id>(classNamed<name>()); }

protected:
    template <typename Result, FixedString selector, typename... Arguments>
    Result send(const Arguments&... arguments) const {
        return Message<name, false, selector, Result, Arguments...>::send(this->get(), arguments...);
    }

    template <typename Result, FixedString selector, typename... Arguments>
    static Result sendToClass(const Arguments&... arguments) {
        return Message<name, true, selector, Result, Arguments...>::send(classObject(), arguments...);
    }

    /// A new object, made by an initializer. None where that fails.
    template <FixedString initializer, typename... Arguments>
    static Derived make(const Arguments&... arguments) {
        static_assert(initializer.view().starts_with("init"));
        // The initializer takes the reference over and gives one back, to the same object or to another one.
        const Id allocated = Message<name, true, "alloc", Derived>::send(classObject()).leave();
        return Message<name, false, initializer, Derived, Arguments...>::send(allocated, arguments...);
    }
};

}  // namespace velmo::macos
