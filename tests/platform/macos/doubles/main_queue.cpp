#include "macos/dispatch/main_queue.h"

#include "macos/foundation/ns_object.h"
#include "macos/foundation/ns_thread.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/call_block.h"
#include "platform/macos/doubles/double_system.h"

#include <deque>
#include <mutex>

namespace velmo::macos {
namespace {

std::mutex& queueMutex() {
    static std::mutex only;
    return only;
}
std::deque<void*>& queuedBlocks() {
    static std::deque<void*> only;
    return only;
}
void* nextBlock() {
    const std::lock_guard lock(queueMutex());
    if (queuedBlocks().empty())
        return nullptr;
    void* block = queuedBlocks().front();
    queuedBlocks().pop_front();
    return block;
}

/// A block that lets the run loop turn keeps the others waiting, as the system's queue does.
void runBlocks(Id /*target*/, Selector /*selector*/, Id /*argument*/) {
    static bool isRunning = false;
    if (isRunning)
        return;
    isRunning = true;
    while (void* const block = nextBlock()) {
        doubles::callBlock<void>(block);
        _Block_release(block);
    }
    isRunning = false;
}

/// Has the main thread's run loop run the blocks.
void wakeMainThread() {
    static const Id target = [] {
        const RawClass made = objc_allocateClassPair(classNamed<"NSObject">(), "VelmoMainQueueDouble", 0);
        class_addMethod(made, selectorNamed<"runBlocks:">(), reinterpret_cast<Implementation>(&runBlocks),
                        "v@:@");
        objc_registerClassPair(made);
        return Message<"NSObject", true, "new", Object>::send(reinterpret_cast<Id>(made)).leave();
    }();
    Message<"NSObject", false, "performSelectorOnMainThread:withObject:waitUntilDone:", void, Selector,
            Object, bool>::send(target, selectorNamed<"runBlocks:">(), Object(), false);
}

}  // namespace

namespace dispatch {

extern "C" {
dispatch_queue_s _dispatch_main_q;

void dispatch_async(Id /*queue*/, BlockCode<void()>* block) {
    {
        const std::lock_guard lock(queueMutex());
        queuedBlocks().push_back(_Block_copy(block));
        ++doubles::system().queuedBlocks;
    }
    wakeMainThread();
}
}

}  // namespace dispatch
}  // namespace velmo::macos
