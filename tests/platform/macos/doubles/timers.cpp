#include "platform/macos/doubles/timers.h"

#include "macos/foundation/ns_run_loop.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/call_block.h"
#include "platform/macos/doubles/double_system.h"

namespace velmo::macos::doubles {
namespace {

/// For GNUstep the common modes are a mode like any other.
void addTimer(const NSRunLoop& loop, const NSTimer& timer, const NSString& mode) {
    if (!mode.isEqual(commonRunLoopModes.value())) {
        callOwn<&addTimer>(loop, timer, mode);
        return;
    }
    for (const char* one : {"NSDefaultRunLoopMode", "NSModalPanelRunLoopMode", "NSEventTrackingRunLoopMode"})
        callOwn<&addTimer>(loop, timer, NSString::from(one));
}

void setTolerance(const NSTimer& /*timer*/, double seconds) {
    system().timerTolerances.push_back(seconds);
}

// GNUstep takes blocks for objects, which they are not here: a target has the block instead.

void*& blockOf(Id target) {
    static const std::ptrdiff_t offset =
        ivar_getOffset(class_getInstanceVariable(*reinterpret_cast<RawClass*>(target), "block"));
    return *reinterpret_cast<void**>(reinterpret_cast<char*>(target) + offset);
}
void fire(const NSObject& target, const NSTimer& timer) {
    callBlock<void>(blockOf(target.get()), timer.get());
}
void deallocTarget(Id target, Selector selector) {
    _Block_release(blockOf(target));
    reinterpret_cast<void (*)(Id, Selector)>(
        class_getMethodImplementation(classNamed<"NSObject">(), selector))(target, selector);
}
NSTimer timerWithBlock(const NSTimer& timerClass, double interval, bool repeats, void* block) {
    system().timerIntervals.push_back(interval);
    const auto target =
        Object::adopt<NSObject>(Message<"NSObject", true, "new", NSObject>::send(
                                    reinterpret_cast<Id>(objc_getClass("VelmoTimerTargetDouble")))
                                    .leave());
    blockOf(target.get()) = _Block_copy(block);
    return Message<"NSTimer", true, "timerWithTimeInterval:target:selector:userInfo:repeats:", NSTimer,
                   double, NSObject, Selector, Object, bool>::send(timerClass.get(), interval, target,
                                                                   selectorNamed<"fireBlock:">(), Object(),
                                                                   repeats);
}

void addTarget() {
    const RawClass made = objc_allocateClassPair(classNamed<"NSObject">(), "VelmoTimerTargetDouble", 0);
    class_addIvar(made, "block", sizeof(void*), 3, "^v");
    class_addMethod(made, selectorNamed<"dealloc">(), reinterpret_cast<Implementation>(&deallocTarget),
                    "v@:");
    setMethod<"fireBlock:", &fire>(made);
    objc_registerClassPair(made);
}

}  // namespace

void addTimers() {
    addTarget();
    overrideMethod<"addTimer:forMode:", &addTimer>(classNamed<"NSRunLoop">());
    setMethod<"setTolerance:", &setTolerance>(classNamed<"NSTimer">());
    setMethod<"timerWithTimeInterval:repeats:block:", &timerWithBlock>(metaclassOf(classNamed<"NSTimer">()));
}

}  // namespace velmo::macos::doubles
