#include "platform/macos/doubles/counted_object.h"

namespace velmo::macos {
namespace {

int live = 0;

void dealloc(Id self, Selector selector) {
    --live;
    const Implementation inherited = class_getMethodImplementation(classNamed<"NSObject">(), selector);
    reinterpret_cast<void (*)(Id, Selector)>(inherited)(self, selector);
}

void makeClass() {
    const RawClass made = objc_allocateClassPair(classNamed<"NSObject">(), "VelmoCountedObject", 0);
    class_addMethod(made, selectorNamed<"dealloc">(), reinterpret_cast<Implementation>(&dealloc), "v@:");
    objc_registerClassPair(made);
}

}  // namespace

CountedObject CountedObject::create() {
    static const bool isMade = (makeClass(), true);
    static_cast<void>(isMade);
    ++live;
    return make<"init">();
}

int CountedObject::liveCount() {
    return live;
}

}  // namespace velmo::macos
