#include "main_thread.h"

#include "macos/dispatch/main_queue.h"
#include "macos/objc/autorelease_pool.h"

#include <memory>
#include <utility>

namespace velmo::macos {

void runOnMainThread(std::function<void()> work) {
    // The block may be let go of on this thread at last, when the work has long been done.
    const auto kept = std::make_shared<std::function<void()>>(std::move(work));
    const Block<void()> block([kept] {
        // While no events come, the application lets go of nothing.
        const AutoreleasePool pool;
        std::exchange(*kept, nullptr)();
    });
    dispatch::async(reinterpret_cast<Id>(dispatch::mainQueue.place()), block.code());
}

}  // namespace velmo::macos
