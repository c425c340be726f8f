#pragma once

#include "image.h"

#include <optional>
#include <span>

namespace velmo {

/// What has come so far of the icon loader's answer, in which a picture that has broken it may have a hand.
struct IconAnswer {
    enum class State { incomplete, whole, implausible };

    State state = State::incomplete;
    /// Absent where the icon could not be had, too.
    std::optional<Image> icon;
};

IconAnswer readIconAnswer(std::span<const char> received);

}  // namespace velmo
