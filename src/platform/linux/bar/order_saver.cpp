#include "order_saver.h"

#include <utility>

namespace velmo {

OrderSaver::~OrderSaver() {
    if (unwritten_)
        save_(*unwritten_);
}

void OrderSaver::save(const std::vector<std::string>& rightToLeft) {
    unwritten_.reset();
    save_(rightToLeft);
    rest();
}

void OrderSaver::saveSoon(const std::vector<std::string>& rightToLeft) {
    if (rest_.isValid())
        unwritten_ = rightToLeft;
    else
        save(rightToLeft);
}

/// Until the pause is over.
void OrderSaver::rest() {
    rest_ = loop_.schedule(pause, [this] {
        if (const auto order = std::exchange(unwritten_, std::nullopt))
            save(*order);
    });
}

}  // namespace velmo
