#pragma once

#include "platform/menu.h"

#include <functional>

namespace velmo {

/// A menu item that knows what it does.
class ClosureMenuItem : public MenuItem {
public:
    ClosureMenuItem(std::string title, std::string keyEquivalent, std::function<void()> handler)
        : MenuItem(std::move(title), std::move(keyEquivalent)), handler_(std::move(handler)) {}

    void performAction() override { run(); }
    void run() const { handler_(); }

private:
    std::function<void()> handler_;
};

}  // namespace velmo
