#include "platform/macos/doubles/record_class.h"

namespace velmo::macos::doubles {
namespace {

Id& membersOf(Id record) {
    objc_ivar* const variable = class_getInstanceVariable(*reinterpret_cast<RawClass*>(record), "members");
    return *reinterpret_cast<Id*>(reinterpret_cast<char*>(record) + ivar_getOffset(variable));
}

void dealloc(Id self, Selector selector) {
    Object::adopt(membersOf(self));
    reinterpret_cast<void (*)(Id, Selector)>(
        class_getMethodImplementation(classNamed<"NSObject">(), selector))(self, selector);
}

}  // namespace

RawClass makeRecordClass(const char* name) {
    const RawClass made = objc_allocateClassPair(classNamed<"NSObject">(), name, 0);
    class_addIvar(made, "members", sizeof(Id), 3, "@");
    class_addMethod(made, selectorNamed<"dealloc">(), reinterpret_cast<Implementation>(&dealloc), "v@:");
    return made;
}

Object makeRecord(const char* className) {
    return Message<"NSObject", true, "new", Object>::send(reinterpret_cast<Id>(objc_getClass(className)));
}

void setMember(const Object& record, const char* name, const Object& value) {
    Id& members = membersOf(record.get());
    if (members == nullptr)
        members = NSMutableDictionary::create().leave();
    const NSString key = NSString::from(name);
    if (value)
        Object::share<NSMutableDictionary>(members).setObject(value, key);
    else
        Message<"NSMutableDictionary", false, "removeObjectForKey:", void, NSString>::send(members, key);
}

void setMember(const Object& record, const char* name, double value) {
    setMember(record, name, NSNumber::with(value));
}

Object member(const Object& record, const char* name) {
    return Object::share<NSDictionary>(membersOf(record.get())).objectForKey(NSString::from(name));
}

double numberMember(const Object& record, const char* name) {
    return as<NSNumber>(member(record, name)).doubleValue();
}

}  // namespace velmo::macos::doubles
