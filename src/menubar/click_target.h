#pragma once

#include "platform/application.h"

#include <functional>

namespace velmo {

/// Receives a button's action and adds the event that caused it.
class ClickTarget {
public:
    explicit ClickTarget(const Application& application) : application_(application) {}

    std::function<void(const Event&)> handler;

    void clicked() const;

private:
    const Application& application_;
};

}  // namespace velmo
