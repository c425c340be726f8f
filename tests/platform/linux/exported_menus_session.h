#pragma once

#include "linux/status_notifier/menu_client.h"

#include "bus_session.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo {

/// A program with a menu that it exports, and whoever asks for that.
class ExportedMenusSession : public BusSession {
protected:
    using Entry = desktop::BusProgram::MenuEntry;
    using MenuClient = status_notifier::MenuClient;
    using Outcome = MenuClient::Outcome;

    static constexpr const char* menuInterface = "com.canonical.dbusmenu";
    static constexpr std::uint32_t clickTime = 1234;

    static Entry entry(std::int32_t id, const std::string& label, std::vector<Entry> children = {}) {
        Entry made{id, {{"label", label}}, std::move(children)};
        if (!made.children.empty())
            made.properties["children-display"] = std::string("submenu");
        return made;
    }

    void SetUp() override {
        BusSession::SetUp();
        startHost();
        owner_ = program();
        owner_->addItem("/StatusNotifierItem", "owner");
        owner_->setMenuPath("/StatusNotifierItem");
        owner_->registerItem("/StatusNotifierItem");
        ASSERT_TRUE(untilItems(1));
    }

    void TearDown() override {
        menu_.reset();
        owner_.reset();
        BusSession::TearDown();
    }

    void ask(const Entry& root) {
        owner_->setMenu("/Menu", root);
        ask();
    }

    void changeProperty(std::int32_t id, const std::string& name, const std::string& value) {
        owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [&](auto* message) {
            return sd_bus_message_append(message, "a(ia{sv})a(ias)", 1, id, 1, name.c_str(), "s",
                                         value.c_str(), 0);
        });
    }

    void ask() {
        menu_ = std::make_unique<MenuClient>(*items_.front(), 16, "", clickTime);
        outcome_.reset();
        menu_->prepare([this](auto outcome) { outcome_ = outcome; });
    }

    /// The menu, once it can be shown.
    const ExportedMenuEntry& shown(const Entry& root) {
        ask(root);
        EXPECT_TRUE(until([&] { return outcome_ == Outcome::ready; }));
        return menu_->root();
    }

    std::unique_ptr<desktop::BusProgram> owner_;
    std::unique_ptr<MenuClient> menu_;
    std::optional<Outcome> outcome_;
};

}  // namespace velmo
