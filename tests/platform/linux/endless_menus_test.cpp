#include "exported_menus_session.h"

namespace velmo {

namespace {

/// Menus with more than anybody wants to see, or that change without end.
class EndlessMenus : public ExportedMenusSession {
protected:
    static std::size_t count(const ExportedMenuEntry& menu) {
        std::size_t sum = menu.children.size();
        for (const auto& child : menu.children)
            sum += count(child);
        return sum;
    }
};

TEST_F(EndlessMenus, LoadPicturesHoweverManyThereHaveBeen) {
    const auto pictured = [](int number) {
        const std::string file =
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"16\">"
            "<rect width=\"16\" height=\"16\" fill=\"rgb(0,0," +
            std::to_string(number) + ")\"/></svg>";
        Entry made = entry(number, "Pictured");
        made.properties["icon-data"] = std::vector<std::uint8_t>(file.begin(), file.end());
        return made;
    };
    const auto& menu = shown({0, {}, {pictured(1)}});
    constexpr int step = 50;
    for (int first = 1; first <= 250; first += step) {
        Entry root{0, {}, {}};
        for (int number = first; number < first + step; ++number)
            root.children.push_back(pictured(number));
        owner_->setMenu("/Menu", root);
        owner_->tellOfLayout();
        const int last = first + step - 1;
        ASSERT_TRUE(until([&] { return menu.children.back().id == last && menu.children.back().icon; }));
        const auto& pixels = *std::get<Bitmap>(menu.children.back().icon->content).pixels;
        EXPECT_EQ(pixels[0], last);
    }
}

TEST_F(EndlessMenus, AreAskedForAnewWhereMoreChangesThanTheyHaveEntries) {
    const auto& menu = shown({0, {}, {entry(1, "One"), entry(2, "Two")}});
    owner_->setMenu("/Menu", {0, {}, {entry(1, "One"), entry(2, "Deux")}});
    owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [&](auto* message) {
        sd_bus_message_open_container(message, 'a', "(ia{sv})");
        for (std::size_t count = 0; count < status_notifier::mostMenuEntries; ++count)
            sd_bus_message_append(message, "(ia{sv})", 1, 1, "label", "s", "Un");
        sd_bus_message_append(message, "(ia{sv})", 2, 1, "label", "s", "Deux");
        sd_bus_message_close_container(message);
        return sd_bus_message_append(message, "a(ias)", 0);
    });
    EXPECT_TRUE(until([&] { return menu.children[0].label == "Un"; }));
    EXPECT_EQ(menu.children[1].label, "Two");
    EXPECT_TRUE(until([&] { return menu.children[1].label == "Deux"; }));
    EXPECT_EQ(owner_->callsOf("GetLayout"), 2);
}

TEST_F(EndlessMenus, ThatChangeWithoutEndLeaveTheLoopFree) {
    Entry root{0, {}, {}};
    for (std::int32_t id = 1; id <= 1000; ++id)
        root.children.push_back(entry(id, "Entry " + std::to_string(id)));
    const auto& menu = shown(root);
    for (int count = 0; count < 30; ++count) {
        owner_->emit("/Menu", menuInterface, "ItemsPropertiesUpdated", [&](auto* message) {
            sd_bus_message_open_container(message, 'a', "(ia{sv})");
            for (int index = 0; index < 40000; ++index)
                sd_bus_message_append(message, "(ia{sv})", index < 39000 ? 5000 : 1000, 0);
            sd_bus_message_close_container(message);
            return sd_bus_message_append(message, "a(ias)", 0);
        });
    }
    owner_->setMenu("/Menu", {0, {}, {entry(1, "The end")}});
    owner_->tellOfLayout();
    std::chrono::steady_clock::duration longest{};
    ASSERT_TRUE(until(
        [&] {
            const auto start = std::chrono::steady_clock::now();
            loop_.turn();
            longest = std::max(longest, std::chrono::steady_clock::now() - start);
            return menu.children.size() == 1;
        },
        30));
#ifdef __SANITIZE_ADDRESS__
    const auto bound = std::chrono::milliseconds(200);
#else
    const auto bound = std::chrono::milliseconds(50);
#endif
    EXPECT_LT(longest, bound);
}

TEST_F(EndlessMenus, AreCutWhereTheyHaveTooManyEntries) {
    Entry root{0, {}, {}};
    for (std::int32_t id = 1; id <= 10000; ++id)
        root.children.push_back(entry(id, "Entry " + std::to_string(id)));
    const auto start = std::chrono::steady_clock::now();
    const auto& menu = shown(root);
    EXPECT_EQ(menu.children.size(), status_notifier::mostMenuEntries);
    EXPECT_EQ(menu.children.back().label, "Entry 1000");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
}

TEST_F(EndlessMenus, AreCutWhereTheyHaveTooManyEntriesBelowEachOther) {
    std::int32_t id = 1;
    Entry inner = entry(id, "Leaf");
    for (int depth = 1; depth < status_notifier::deepestMenu; ++depth) {
        std::vector<Entry> children = {inner};
        for (int sibling = 0; sibling < 100; ++sibling)
            children.push_back(entry(++id, "Leaf"));
        inner = entry(++id, "Level", children);
    }
    EXPECT_EQ(count(shown({0, {}, {inner}})), status_notifier::mostMenuEntries);
}

TEST_F(EndlessMenus, ThatContainThemselvesAreCut) {
    Entry inner = entry(1, "Again", {entry(2, "Leaf"), entry(0, "Root")});
    for (int depth = 0; depth < 5; ++depth)
        inner = entry(1, "Again", {inner, entry(2, "Leaf")});
    const auto& menu = shown({0, {}, {inner, entry(1, "Again"), entry(3, "Other")}});
    EXPECT_EQ(count(menu), 3U);
}

TEST_F(EndlessMenus, AreCutWhereTheyAreTooDeep) {
    Entry inner = entry(100, "Leaf");
    // As deep as messages may be.
    for (std::int32_t id = 99; id > 80; --id)
        inner = entry(id, "Level", {inner});
    const auto& menu = shown({0, {}, {inner}});
    EXPECT_EQ(count(menu), static_cast<std::size_t>(status_notifier::deepestMenu));
}

}  // namespace

}  // namespace velmo
