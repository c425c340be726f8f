#include "object.h"

namespace velmo::macos {
namespace {

template <typename Result, FixedString selector>
Result tell(Id object) {
    const Selector name = selectorNamed<selector>();
    return reinterpret_cast<Result (*)(Id, Selector)>(messageImplementation<Result>(object, name))(object,
                                                                                                   name);
}

}  // namespace

Id Object::leaveToPool() {
    return id_ == nullptr ? nullptr : tell<Id, "autorelease">(leave());
}

Id Object::retained(Id object) {
    return object == nullptr ? nullptr : tell<Id, "retain">(object);
}

void Object::release(Id object) {
    if (object != nullptr)
        tell<void, "release">(object);
}

}  // namespace velmo::macos
