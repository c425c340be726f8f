#include "built_files.h"
#include "soak_session.h"

#include <algorithm>

namespace velmo::desktop {

namespace {

constexpr int trayPrograms = 8;
constexpr int busPrograms = 5;

}  // namespace

const std::vector<SoakSession::Action>& SoakSession::actions() {
    static const std::vector<Action> all = {
        {"a program comes into the tray", 20, &SoakSession::trayProgramComes},
        {"a program comes onto the bus", 14, &SoakSession::busProgramComes},
        {"a program dies", 16, &SoakSession::programGoes},
        {"a program takes its icon away", 8, &SoakSession::iconGoes},
        {"an icon changes", 14, &SoakSession::iconChanges},
        {"the toggle is clicked", 20, &SoakSession::clickToggle},
        {"the toggle is clicked with Option", 6, &SoakSession::optionClickToggle},
        {"an icon is clicked", 8, &SoakSession::clickIcon},
        {"the toggle's menu is opened", 4, &SoakSession::openMenuAndLeaveIt},
        {"the panel is opened", 4, &SoakSession::openPanelAndLeaveIt},
        {"an icon is dragged", 12, &SoakSession::dragIcon},
        {"monitors come and go", 5, &SoakSession::changeMonitors},
        {"the scale changes", 4, &SoakSession::changeScale},
        {"the zone changes", 4, &SoakSession::changeZone},
        {"the bus starts anew", 3, &SoakSession::restartBus},
        {"another window manager comes", 3, &SoakSession::replaceManager},
        {"the settings are looked at", 2, &SoakSession::lookAtSettings},
        {"settings change", 4, &SoakSession::changeSettings},
    };
    return all;
}

void SoakSession::step() {
    int total = 0;
    for (const auto& action : actions())
        total += action.weight;
    int choice = below(total);
    for (const auto& action : actions()) {
        choice -= action.weight;
        if (choice >= 0)
            continue;
        lastAction_ = action.name;
        ++counts_[lastAction_];
        (this->*action.run)();
        expectAll();
        return;
    }
}

/// Directly right of the divider, unless it has had a place before.
void SoakSession::placeNew(const std::string& name) {
    if (std::find(order_.begin(), order_.end(), name) == order_.end())
        order_.insert(std::find(order_.begin(), order_.end(), "Velmo.Divider"), name);
}

void SoakSession::trayProgramComes() {
    const std::string name = "tray" + std::to_string(below(trayPrograms));
    if (clients_.contains(name))
        return;
    Client client;
    client.program = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
    client.icon = client.program->makeIcon(name, TrayClient::Look(below(4)), 0x2060c0);
    client.program->dock(client.icon);
    // As programs do that survive their tray.
    client.program->dockWithEachTray(random_());
    placeNew(name);
    clients_[name] = std::move(client);
}

void SoakSession::busProgramComes() {
    const std::string name = "bus" + std::to_string(below(busPrograms));
    if (clients_.contains(name))
        return;
    placeNew(name);
    clients_[name].busProgram = programWithItem(name);
}

std::string SoakSession::anyProgram() {
    if (clients_.empty())
        return {};
    return std::next(clients_.begin(), below(static_cast<int>(clients_.size())))->first;
}

std::string SoakSession::anyOnScreen() {
    std::vector<std::string> found;
    for (const auto& [name, client] : clients_) {
        if (isOnScreen(itemOf(name)))
            found.push_back(name);
    }
    return found.empty() ? std::string()
                         : found[static_cast<std::size_t>(below(static_cast<int>(found.size())))];
}

void SoakSession::programGoes() {
    clients_.erase(anyProgram());
}

void SoakSession::iconGoes() {
    const auto name = anyProgram();
    const auto found = clients_.find(name);
    if (found == clients_.end())
        return;
    auto& client = found->second;
    if (client.program)
        client.program->destroy(client.icon);
    else
        client.busProgram->removeObject(itemPath);
    clients_.erase(found);
}

void SoakSession::iconChanges() {
    const auto found = clients_.find(anyProgram());
    if (found == clients_.end())
        return;
    const auto color = static_cast<std::uint32_t>(below(0x1000000));
    auto& client = found->second;
    if (client.program) {
        client.program->setColor(client.icon, color);
        return;
    }
    client.busProgram->setProperty(itemPath, "IconPixmap", BusProgram::pixmaps({16, 22, 64}, color));
    client.busProgram->emit(itemPath, itemInterface, "NewIcon");
}

void SoakSession::clickToggle() {
    click(toggle());
    level_ = level_ == Level::none ? Level::hidden : Level::none;
}

void SoakSession::optionClickToggle() {
    clickHolding("Alt_L", toggle());
    level_ = level_ == Level::all ? Level::none : Level::all;
}

void SoakSession::clickIcon() {
    if (const auto name = anyOnScreen(); !name.empty())
        click(itemOf(name));
}

void SoakSession::openMenuAndLeaveIt() {
    click(toggle(), rightButton);
    EXPECT_TRUE(eventually([&] { return openMenu().has_value(); })) << "its menu opens";
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !openMenu(); })) << "its menu closes";
}

void SoakSession::openPanelAndLeaveIt() {
    outputOf({velmoProgram, "panel"}, environment_);
    EXPECT_TRUE(eventually([&] { return panel().has_value(); })) << "the panel opens";
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !panel(); })) << "the panel closes";
}

void SoakSession::dragIcon() {
    const auto dragged = anyOnScreen();
    const auto target = anyOnScreen();
    if (dragged.empty() || dragged == target)
        return;
    const auto before = seenOrder();
    const auto place = x().area(itemOf(target)).value_or(Area{});
    superDrag(itemOf(dragged), place.midX() - 2 + below(5));
    const auto sorted = [&](std::vector<std::string> names) {
        std::erase(names, dragged);
        return names;
    };
    EXPECT_TRUE(eventually([&] { return sorted(seenOrder()) == sorted(before); }))
        << "others keep their order";
    // It lies where it was let go, and the model learns from that.
    EXPECT_TRUE(comesToRest(milliseconds(100)));
    const auto seen = seenOrder();
    const auto at = std::find(seen.begin(), seen.end(), dragged);
    ASSERT_TRUE(at != seen.end()) << dragged << " is lost";
    std::erase(order_, dragged);
    if (at == seen.begin())
        order_.insert(std::find(order_.begin(), order_.end(), seen[1]), dragged);
    else
        order_.insert(std::next(std::find(order_.begin(), order_.end(), *std::prev(at))), dragged);
}

}  // namespace velmo::desktop
