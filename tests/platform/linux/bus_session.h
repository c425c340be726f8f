#pragma once

#include "bus_program.h"
#include "linux/dbus/session_bus.h"
#include "linux/event_loop/event_loop.h"
#include "linux/icons/icon_loader.h"
#include "linux/status_notifier/host.h"
#include "private_bus.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velmo {

/// A session bus of the test's own, and a host of items on it.
class BusSession : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Runs the loop until the condition holds; false where it does not in time.
    bool until(const std::function<bool()>& condition, Seconds limit = 8);
    void runFor(Seconds time);
    void startHost();
    void stopHost();
    /// From now on icons, all of them black dots, take as many seconds as their names say; those whose names
    /// begin with "none" are missing. Before `startHost`.
    void useSlowIcons();
    std::unique_ptr<desktop::BusProgram> program() const;
    /// A program with an item of this id, which is there.
    std::unique_ptr<desktop::BusProgram> programWithItem(const std::string& id);
    /// Of the icon's first pixel, without its opacity.
    static std::uint32_t colorOf(const status_notifier::Item& item);
    /// Runs the loop until there are so many items.
    bool untilItems(std::size_t count);
    /// The item with this id. Null where there is none.
    status_notifier::Item* item(const std::string& id) const;

    std::filesystem::path folder_;
    EventLoop loop_;
    std::unique_ptr<desktop::PrivateBus> bus_;
    std::unique_ptr<IconLoader> icons_;
    std::unique_ptr<status_notifier::Host> host_;
    std::unique_ptr<dbus::SessionBus> sessionBus_;
    status_notifier::IconLook look_;
    /// In the order in which they came.
    std::vector<status_notifier::Item*> items_;
    int changes_ = 0;
    int timesUp_ = 0;
};

}  // namespace velmo
