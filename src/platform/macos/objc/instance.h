#pragma once

#include "class_of.h"
#include "subclass.h"

namespace velmo::macos {

/// One object of a `Subclass`, which calls its owner until this goes; the system may keep it longer.
///
///     class Target {
///         void perform(NSObject sender);
///         using Class = Subclass<Target, "VelmoTarget", NSObject, Method<"perform:", &Target::perform>>;
///         Instance<Target, Class, NSObject> instance_{*this};
///     };
template <typename Owner, typename Class, typename Base>
class Instance {
public:
    /// Made by `init`.
    explicit Instance(Owner& owner) : Instance(owner, [](Id allocated) { return initialized(allocated); }) {}
    /// Made by another initializer: `initialize` takes what was allocated over and gives what has come of it.
    template <typename Initialize>
    Instance(Owner& owner, const Initialize& initialize) {
        const Id fresh = allocated();
        // An initializer may ask the object already, and remember the answer.
        if (fresh != nullptr)
            Class::setOwner(fresh, &owner);
        object_ = Object::adopt<Base>(initialize(fresh));
        if (object_ && object_.get() != fresh)
            Class::setOwner(object_.get(), &owner);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;
    ~Instance() {
        if (object_)
            Class::setOwner(object_.get(), nullptr);
    }

    const Base& object() const { return object_; }

private:
    static Id allocated() {
        return Message<Base::className, true, "alloc", Object>::send(reinterpret_cast<Id>(Class::rawClass()))
            .leave();
    }
    static Id initialized(Id allocated) {
        return Message<Base::className, false, "init", Object>::send(allocated).leave();
    }

    Base object_;
};

}  // namespace velmo::macos
