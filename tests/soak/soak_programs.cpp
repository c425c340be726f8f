// Programs with icons: they come, change, hang, are used, and go.

#include "built_files.h"
#include "soak_session.h"

#include <algorithm>
#include <csignal>
#include <thread>

namespace velmo::desktop {

namespace {

constexpr int mostTrayPrograms = 7;
constexpr int mostBusPrograms = 4;
/// Programs of toolkits: two on the bus, by their titles, and one in the tray.
constexpr const char* gtkProgram = "gxkb";
constexpr const char* qtProgram = "qt-tray";
constexpr const char* wxProgram = "wx_tray.py";
constexpr std::uint32_t opaque = 0xff000000;

std::vector<std::string> numbered(const std::string& name, int count) {
    std::vector<std::string> names;
    for (int number = 0; number < count; ++number)
        names.push_back(name + std::to_string(number));
    return names;
}

}  // namespace

bool SoakSession::trayProgramComes() {
    const auto name = anyOf(numbered("tray", mostTrayPrograms));
    if (name.empty())
        return false;
    const auto look = TrayClient::Look(below(4));
    const auto color = static_cast<std::uint32_t>(below(0x1000000));
    Client client;
    client.identity = name + ".Icon";
    client.trayProgram = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
    client.icon = client.trayProgram->makeIcon(name, look, color);
    client.trayProgram->takePresses(client.icon);
    client.trayProgram->dock(client.icon);
    // As programs do that survive their tray.
    client.trayProgram->dockWithEachTray(random_());
    // Others leave something else in the middle of an icon that has been made larger, or nothing at all.
    if (look == TrayClient::Look::opaque)
        client.color = color;
    client.countsClicks = look != TrayClient::Look::shaped;
    placeNew(name);
    clients_[name] = std::move(client);
    return true;
}

bool SoakSession::busProgramComes() {
    const auto name = anyOf(numbered("bus", mostBusPrograms));
    if (name.empty())
        return false;
    placeNew(name);
    Client client;
    client.identity = "soak_test." + name;
    client.busProgram = std::make_unique<BusProgram>(busAddress());
    client.busProgram->addItem(itemPath, name);
    client.busProgram->setText(itemPath, "Title", name);
    client.color = 0xff0000;
    client.countsClicks = true;
    client.hasMenu = below(2) == 0;
    if (client.hasMenu) {
        client.busProgram->setMenu("/Menu",
                                   {0, {}, {{1, {{"label", "Open"}}, {}}, {2, {{"label", "Quit"}}, {}}}});
        client.busProgram->setMenuPath(itemPath);
    }
    client.busProgram->registerItem(itemPath);
    clients_[name] = std::move(client);
    return true;
}

bool SoakSession::toolkitProgramComes() {
    const auto name = anyOf({gtkProgram, qtProgram, wxProgram});
    if (name.empty())
        return false;
    placeNew(name);
    Client client;
    if (name == gtkProgram) {
        client.identity = "gxkb.example-simple-client";
        client.process = run({gtkProgram});
    } else if (name == qtProgram) {
        client.identity = "qt_tray.qt-tray";
        client.process = run({qtTrayProgram, noteFile()});
    } else {
        client.identity = "wx_tray.py.Wx_tray";
        client.windowClass = "Wx_tray";
        client.process = run({"/usr/bin/python3", std::string(clientScripts) + "/" + name, noteFile()});
    }
    clients_[name] = std::move(client);
    return true;
}

/// A tenth of a second after the watcher has gone one of them makes an icon for a tray. It does so, too,
/// where another watcher has come within that time, with which it registers: it would show two then.
void SoakSession::awaitRetreat() const {
    const auto hasIcon = [&] {
        const auto windows = x().children(x().root());
        return std::any_of(windows.begin(), windows.end(), [&](xcb_window_t window) {
            return x().property(window, "WM_CLASS").starts_with(gtkProgram) &&
                   !x().property(window, "_XEMBED_INFO").empty();
        });
    };
    EXPECT_TRUE(!clients_.contains(gtkProgram) || eventually(hasIcon)) << gtkProgram << " makes an icon";
}

bool SoakSession::programGoes() {
    const auto found = clients_.find(anyProgram());
    if (found == clients_.end())
        return false;
    if (auto& process = found->second.process)
        process->signal(SIGKILL);
    clients_.erase(found);
    return true;
}

bool SoakSession::iconGoes() {
    const auto found = clients_.find(anyProgram());
    if (found == clients_.end())
        return false;
    auto& client = found->second;
    if (client.trayProgram)
        client.trayProgram->destroy(client.icon);
    else if (client.busProgram)
        client.busProgram->removeObject(itemPath);
    clients_.erase(found);
    return true;
}

bool SoakSession::iconChanges() {
    const auto found = clients_.find(anyProgram());
    if (found == clients_.end() || found->second.process)
        return false;
    const auto color = static_cast<std::uint32_t>(below(0x1000000));
    auto& client = found->second;
    if (client.color)
        client.color = color;
    if (client.trayProgram) {
        client.trayProgram->setColor(client.icon, color);
        return true;
    }
    client.busProgram->setProperty(itemPath, "IconPixmap", BusProgram::pixmaps({16, 22, 64}, opaque | color));
    client.busProgram->emit(itemPath, itemInterface, "NewIcon");
    return true;
}

/// Whatever is done with its icon meanwhile, the bar is there for the user.
bool SoakSession::programHangs() {
    const auto found = clients_.find(anyOnScreen([](const auto& client) { return !client.trayProgram; }));
    if (found == clients_.end())
        return false;
    auto& client = found->second;
    if (client.process)
        client.process->signal(SIGSTOP);
    else
        client.busProgram->pause();
    click(itemOf(found->first));
    toggleHidden();
    expectAll();
    toggleHidden();
    expectAll();
    if (client.process)
        client.process->signal(SIGCONT);
    else
        client.busProgram->goOn();
    leaveMenuOf(client);
    return true;
}

bool SoakSession::clickIcon() {
    const auto found = clients_.find(anyOnScreen());
    if (found == clients_.end())
        return false;
    const auto& [name, client] = *found;
    const int before = clicksOf(client);
    click(itemOf(name));
    expectClick(client, before);
    leaveMenuOf(client);
    return true;
}

/// Some programs of toolkits open one at a click: we draw it, or they do it themselves and hold the keyboard.
void SoakSession::leaveMenuOf(const Client& client) {
    if (!client.process)
        return;
    std::this_thread::sleep_for(milliseconds(400));
    xdotool({"key", "Escape"});
    EXPECT_TRUE(eventually([&] { return !openMenu(); })) << "the menu of " << client.identity << " closes";
}

int SoakSession::clicksOf(const Client& client) {
    return client.trayProgram  ? client.trayProgram->presses()
           : client.busProgram ? client.busProgram->callsOf("Activate")
                               : 0;
}

void SoakSession::expectClick(const Client& client, int before) {
    EXPECT_TRUE(!client.countsClicks || eventually([&] { return clicksOf(client) > before; }))
        << client.identity << " is told of the click, " << x().pointer().first << ", " << x().pointer().second
        << windows();
}

bool SoakSession::openIconsMenu() {
    const auto name = anyOnScreen([](const auto& client) { return client.hasMenu; });
    if (name.empty())
        return false;
    click(itemOf(name), rightButton);
    leave("the menu of " + name, [&] { return openMenu().has_value(); });
    return true;
}

}  // namespace velmo::desktop
