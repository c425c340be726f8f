#pragma once

#include "run_loop.h"
#include "scoped_timer.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// Has the order of items written down, and waits for the disk no more than it must: items that come one by
/// one would have the whole file replaced for each of them.
class OrderSaver {
public:
    using Save = std::function<void(const std::vector<std::string>& rightToLeft)>;

    /// Between two writings of what nobody has asked for.
    static constexpr Seconds pause = 2;

    OrderSaver(RunLoop& loop, Save save) : loop_(loop), save_(std::move(save)) {}
    /// Writes what is still unwritten.
    ~OrderSaver();
    OrderSaver(const OrderSaver&) = delete;
    OrderSaver& operator=(const OrderSaver&) = delete;

    /// For what the user has done: written when this returns.
    void save(const std::vector<std::string>& rightToLeft);
    /// For what has come about: written at once where the pause is over, else at its end.
    void saveSoon(const std::vector<std::string>& rightToLeft);

private:
    void rest();

    RunLoop& loop_;
    Save save_;
    std::optional<std::vector<std::string>> unwritten_;
    ScopedTimer rest_;
};

}  // namespace velmo
