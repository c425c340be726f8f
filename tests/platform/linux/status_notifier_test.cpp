#include "bus_session.h"

#include <unistd.h>

#include <algorithm>

namespace velmo {

namespace {

using desktop::BusProgram;
using status_notifier::ItemStatus;

constexpr const char* path = "/StatusNotifierItem";
constexpr const char* kde = "org.kde.StatusNotifierItem";
constexpr const char* freedesktop = "org.freedesktop.StatusNotifierItem";

class StatusNotifier : public BusSession {
protected:
    void SetUp() override {
        BusSession::SetUp();
        startHost();
    }

    static BusProgram::Append toolTip(const std::string& title, const std::string& description) {
        return [=](sd_bus_message* message) {
            return sd_bus_message_append(message, "v", "(sa(iiay)ss)", "icon", 0, title.c_str(),
                                         description.c_str());
        };
    }
};

TEST_F(StatusNotifier, HostsItemsRegisteredByServiceByPathAndByBoth) {
    const auto byName = program();
    byName->addItem(path, "by-name");
    byName->requestName("org.kde.StatusNotifierItem-7-1");
    byName->registerItem("org.kde.StatusNotifierItem-7-1");
    const auto byUniqueName = program();
    byUniqueName->addItem(path, "by-unique-name");
    byUniqueName->registerItem(byUniqueName->name());
    const auto byPath = program();
    byPath->addItem("/org/ayatana/NotificationItem/one", "by-path");
    byPath->registerItem("/org/ayatana/NotificationItem/one");
    const auto byBoth = program();
    byBoth->addItem("/Somewhere", "by-both");
    byBoth->registerItem(byBoth->name() + "/Somewhere");
    ASSERT_TRUE(untilItems(4));
    for (const auto* id : {"by-name", "by-unique-name", "by-path", "by-both"})
        EXPECT_NE(item(id), nullptr) << id;
    EXPECT_EQ(item("by-both")->processIdentifier(), getpid());
}

TEST_F(StatusNotifier, SpeaksBothFamiliesOfNames) {
    const auto owner = program();
    owner->addItem(path, "free", freedesktop);
    owner->registerItem(path, "org.freedesktop.StatusNotifierWatcher");
    owner->addItem("/Mixed", "mixed", freedesktop);
    owner->registerItem("/Mixed", "org.kde.StatusNotifierWatcher");
    ASSERT_TRUE(untilItems(2));
    item("free")->scroll(120, false);
    EXPECT_TRUE(until([&] { return owner->wasCalled("Scroll 120 vertical"); }));
    owner->setText(path, "Title", "New");
    owner->emit(path, freedesktop, "NewTitle");
    EXPECT_TRUE(until([&] { return item("free")->properties().title == "New"; }));
}

TEST_F(StatusNotifier, OneItemUnderTwoNamesIsOne) {
    const auto owner = programWithItem("once");
    owner->registerItem(path);
    owner->registerItem(owner->name() + path);
    owner->requestName("org.example.Twice");
    owner->registerItem("org.example.Twice");
    runFor(0.2);
    EXPECT_EQ(items_.size(), 1U);
}

TEST_F(StatusNotifier, ReadsWhatAnItemTells) {
    const auto owner = program();
    owner->addItem(path, "full");
    owner->setText(path, "Title", "A title");
    owner->setText(path, "Status", "Passive");
    owner->setProperty(path, "ToolTip", toolTip("Head", "Body"));
    owner->setProperty(path, "ItemIsMenu",
                       [](auto* message) { return sd_bus_message_append(message, "v", "b", 1); });
    owner->setMenuPath(path);
    owner->registerItem(path);
    ASSERT_TRUE(untilItems(1));
    const auto& properties = items_.front()->properties();
    EXPECT_EQ(properties.title, "A title");
    EXPECT_EQ(properties.status, ItemStatus::passive);
    EXPECT_EQ(properties.toolTipTitle, "Head");
    EXPECT_EQ(properties.toolTipDescription, "Body");
    EXPECT_TRUE(properties.itemIsMenu);
    EXPECT_EQ(properties.menuPath, "/Menu");
    EXPECT_EQ(colorOf(*items_.front()), 0xff0000U);
    EXPECT_TRUE(items_.front()->application().ends_with(".full"));
}

TEST_F(StatusNotifier, FollowsEachKindOfChange) {
    const auto owner = programWithItem("live");
    const auto& live = *item("live");
    owner->setText(path, "Status", "Passive");
    owner->emit(path, kde, "NewStatus",
                [](auto* message) { return sd_bus_message_append(message, "s", "Passive"); });
    EXPECT_TRUE(until([&] { return live.properties().status == ItemStatus::passive; }));
    owner->setText(path, "Status", "NeedsAttention");
    owner->setProperty(path, "AttentionIconPixmap", BusProgram::pixmaps({20}, 0xff00ff00));
    owner->emit(path, kde, "NewAttentionIcon");
    EXPECT_TRUE(until([&] { return colorOf(live) == 0x00ff00; }));
    owner->setText(path, "Status", "Active");
    owner->setProperty(path, "IconPixmap", BusProgram::pixmaps({20}, 0xff0000ff));
    owner->emit(path, kde, "NewIcon");
    EXPECT_TRUE(until([&] { return colorOf(live) == 0x0000ff; }));
    EXPECT_FALSE(live.overlay());
    owner->setProperty(path, "OverlayIconPixmap", BusProgram::pixmaps({10}, 0xffffff00));
    owner->emit(path, kde, "NewOverlayIcon");
    EXPECT_TRUE(until([&] { return live.overlay().has_value(); }));
    owner->setProperty(path, "ToolTip", toolTip("Later", ""));
    owner->emit(path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                [](auto* message) { return sd_bus_message_append(message, "sa{sv}as", kde, 0, 0); });
    EXPECT_TRUE(until([&] { return live.properties().toolTipTitle == "Later"; }));
}

TEST_F(StatusNotifier, SignalsOfOtherKindsAreNoReasonToAsk) {
    const auto owner = programWithItem("talkative");
    runFor(0.2);
    const int asked = owner->callsOf("GetAll");
    owner->emit(path, "org.example.Other", "NewIcon");
    owner->emit(path, "org.freedesktop.DBus.Properties", "Other");
    runFor(0.2);
    EXPECT_EQ(owner->callsOf("GetAll"), asked);
    for (const auto* family : {kde, freedesktop}) {
        owner->emit(path, family, "NewIcon");
        EXPECT_TRUE(until([&] { return owner->callsOf("GetAll") == asked + (family == kde ? 1 : 2); }));
        runFor(0.1);
    }
}

TEST_F(StatusNotifier, AChangeWithoutEffectOnTheIconKeepsTheImage) {
    const auto owner = programWithItem("same");
    const auto before = std::get<Bitmap>(item("same")->icon()->content).pixels;
    owner->emit(path, kde, "NewIcon");
    ASSERT_TRUE(until([&] { return owner->callsOf("GetAll") >= 2; }));
    runFor(0.05);
    EXPECT_EQ(std::get<Bitmap>(item("same")->icon()->content).pixels, before);
}

TEST_F(StatusNotifier, AFloodOfChangesIsAskedAboutOnceInAWhile) {
    const auto owner = programWithItem("flood");
    const int before = owner->callsOf("GetAll");
    for (int count = 0; count < 5000; ++count)
        owner->emit(path, kde, "NewIcon");
    owner->setText(path, "Title", "the last");
    owner->emit(path, kde, "NewTitle");
    EXPECT_TRUE(until([&] { return item("flood")->properties().title == "the last"; }));
    EXPECT_LT(owner->callsOf("GetAll") - before, 100);
}

TEST_F(StatusNotifier, ItemsLeaveWithTheirOwnerOrItsName) {
    auto leaves = programWithItem("leaves");
    const auto stays = program();
    stays->addItem(path, "renamed");
    stays->requestName("org.example.Item");
    stays->registerItem("org.example.Item");
    ASSERT_TRUE(untilItems(2));
    leaves.reset();
    ASSERT_TRUE(untilItems(1));
    EXPECT_NE(item("renamed"), nullptr);
    stays->releaseName("org.example.Item");
    EXPECT_TRUE(untilItems(0));
}

TEST_F(StatusNotifier, ItemWhoseObjectVanishesLeaves) {
    const auto owner = programWithItem("vanishing");
    owner->removeObject(path);
    owner->emit(path, kde, "NewIcon");
    EXPECT_TRUE(until([&] { return items_.empty(); }, 12));
}

TEST_F(StatusNotifier, TellsClicksAndScrolls) {
    const auto owner = programWithItem("clicked");
    auto& clicked = *item("clicked");
    bool refused = false;
    clicked.provideActivationToken("token_TIME7");
    clicked.activate(10, 20, [&] { refused = true; });
    clicked.secondaryActivate(11, 21);
    clicked.contextMenu(12, 22);
    clicked.scroll(-120, true);
    for (const auto* call : {"ProvideXdgActivationToken token_TIME7", "Activate 10 20",
                             "SecondaryActivate 11 21", "ContextMenu 12 22", "Scroll -120 horizontal"})
        EXPECT_TRUE(until([&] { return owner->wasCalled(call); })) << call;
    EXPECT_FALSE(refused);
}

TEST_F(StatusNotifier, TellsWhenAnItemCannotBeActivated) {
    const auto owner = programWithItem("menu-only");
    owner->refuse("Activate");
    bool refused = false;
    item("menu-only")->activate(1, 2, [&] { refused = true; });
    EXPECT_TRUE(until([&] { return refused; }));
}

TEST_F(StatusNotifier, SilenceIsNoRefusal) {
    const auto owner = programWithItem("hanging");
    owner->keepSilentOn("Activate");
    bool refused = false;
    item("hanging")->activate(1, 2, [&] { refused = true; });
    runFor(2.5);
    EXPECT_FALSE(refused);
}

TEST_F(StatusNotifier, WrongTypesReadAsIfTheyWereMissing) {
    const auto owner = program();
    owner->addItem(path, "wrong");
    const auto number = [](auto* message) { return sd_bus_message_append(message, "v", "i", 7); };
    const auto deep = [](auto* message) {
        return sd_bus_message_append(message, "v", "a{sv}", 2, "a", "as", 1, "x", "b", "(ii)", 1, 2);
    };
    for (const auto* name :
         {"Title", "Status", "IconName", "IconPixmap", "ToolTip", "ItemIsMenu", "IconThemePath"})
        owner->setProperty(path, name, number);
    for (const auto* name :
         {"Menu", "OverlayIconPixmap", "AttentionIconPixmap", "Unknown", "OverlayIconName"})
        owner->setProperty(path, name, deep);
    owner->setProperty(path, "ZLast", number);
    owner->registerItem(path);
    ASSERT_TRUE(untilItems(1));
    const auto& properties = items_.front()->properties();
    EXPECT_EQ(properties.id, "wrong");
    EXPECT_EQ(properties.title, "");
    EXPECT_EQ(properties.status, ItemStatus::active);
    EXPECT_EQ(properties.menuPath, "");
    EXPECT_FALSE(items_.front()->icon());
}

TEST_F(StatusNotifier, AnItemThatTellsNothingIsOneOfTheUsualFamily) {
    const auto owner = program();
    owner->addObject(path);
    owner->registerItem(path);
    ASSERT_TRUE(untilItems(1));
    items_.front()->activate(1, 2, [] {});
    ASSERT_TRUE(until([&] { return owner->callsOf("Activate") == 1; }));
    EXPECT_EQ(owner->interfaceOf("Activate"), kde);
}

TEST_F(StatusNotifier, TextsAreKeptAsFarAsTheyAreShownAndPathsAsAWhole) {
    const std::string longText(10000, 'x');
    const auto owner = program();
    owner->addItem(path, "long");
    owner->setText(path, "Title", longText);
    owner->setText(path, "IconName", longText);
    owner->setText(path, "IconThemePath", longText);
    owner->setProperty(path, "ToolTip", toolTip(longText, longText));
    owner->registerItem(path);
    ASSERT_TRUE(untilItems(1));
    const auto& properties = items_.front()->properties();
    EXPECT_EQ(properties.title.size(), 500U);
    EXPECT_EQ(properties.toolTipTitle.size(), 500U);
    EXPECT_EQ(properties.toolTipDescription.size(), 5000U);
    EXPECT_EQ(properties.icon.name, "");
    EXPECT_EQ(properties.iconThemePath, "");
    const std::string usual(4096, 'y');
    owner->setText(path, "IconThemePath", usual);
    owner->emit(path, kde, "NewIconThemePath");
    EXPECT_TRUE(until([&] { return items_.front()->properties().iconThemePath == usual; }));
}

TEST_F(StatusNotifier, AProgramThatIsBusyForLongIsShownWhenItAnswers) {
    std::shared_ptr<dbus::Bus> bus;
    dbus::SessionBus session(
        loop_, [&](const auto& opened) { bus = opened; }, [] {});
    session.start(bus_->address());
    const auto owner = program();
    owner->addItem(path, "busy");
    owner->pause();
    status_notifier::Item item({loop_, *icons_, bus, 0.1}, {owner->name(), path}, look_);
    bool changed = false;
    item.setOnChange([&] { changed = true; });
    runFor(3.5);
    EXPECT_FALSE(changed);
    owner->goOn();
    EXPECT_TRUE(until([&] { return changed; }));
    EXPECT_FALSE(item.isGone());
    EXPECT_EQ(item.properties().id, "busy");
}

TEST_F(StatusNotifier, AnItemThatRegistersAgainAfterASilenceIsAskedAtOnce) {
    const auto owner = program();
    owner->addItem(path, "again");
    owner->registerItem(path);
    owner->pause();
    runFor(3.5);
    owner->goOn();
    runFor(0.3);
    EXPECT_TRUE(items_.empty()) << "its answer comes too late";
    owner->registerItem(path);
    EXPECT_TRUE(until([&] { return items_.size() == 1; }, 1));
}

TEST_F(StatusNotifier, SilentOwnersLeaveOthersAlone) {
    const auto silent = program();
    silent->keepSilentOn("GetAll");
    for (int index = 0; index < 50; ++index) {
        silent->addItem("/Item" + std::to_string(index), "silent");
        silent->registerItem("/Item" + std::to_string(index));
    }
    const auto start = std::chrono::steady_clock::now();
    const auto good = programWithItem("good");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_EQ(items_.size(), 1U);
}

TEST_F(StatusNotifier, ABusThatGoesTakesTheItemsAndIsFollowedWhenItReturns) {
    auto owner = programWithItem("before");
    owner.reset();
    owner = programWithItem("before");
    bus_->stop();
    EXPECT_TRUE(untilItems(0));
    EXPECT_TRUE(until([&] { return host_ == nullptr; }));
    runFor(0.3);
    bus_->start();
    ASSERT_TRUE(until([&] { return timesUp_ >= 2 && host_; }));
    runFor(0.1);
    const auto after = programWithItem("after");
    EXPECT_EQ(items_.size(), 1U);
}

}  // namespace

}  // namespace velmo
