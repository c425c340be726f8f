#pragma once

#include <thread>

namespace velmo {

/// The thread that everything runs on: the one that this was made on.
class MainActor {
public:
    /// Ends the process where another thread asks: what follows would not be safe on it.
    void assumeIsolated() const;

private:
    std::thread::id thread_ = std::this_thread::get_id();
};

}  // namespace velmo
