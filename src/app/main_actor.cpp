#include "app/main_actor.h"

#include <cstdlib>
#include <iostream>

namespace velmo {

void MainActor::assumeIsolated() const {
    if (std::this_thread::get_id() == thread_)
        return;
    std::cerr << "Incorrect actor executor assumption; Expected same executor as MainActor." << '\n';
    std::abort();
}

}  // namespace velmo
