#include "message.h"

namespace velmo::macos {

Id Object::leaveToPool() {
    return Message<"NSObject", false, "autorelease", Id>::send(leave());
}

Id Object::retained(Id object) {
    return Message<"NSObject", false, "retain", Id>::send(object);
}

void Object::release(Id object) {
    Message<"NSObject", false, "release", void>::send(object);
}

}  // namespace velmo::macos
