#include "hosts.h"

#include "built_files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace velmo::desktop {

namespace {

std::string numberedIcon(int number) {
    return "bench" + std::to_string(number);
}

void configureVelmo(const Display& display, int hiddenIcons) {
    nlohmann::json order = {"Velmo.Toggle", "Velmo.Divider"};
    for (int number = 0; number < hiddenIcons; ++number)
        order.push_back(numberedIcon(number) + ".Bench");
    display.writeDefaults({{"statusItemOrder", order}, {"autoRehide", false}});
}

void configureNothing(const Display& /*display*/, int /*hiddenIcons*/) {}

void configureTint2(const Display& display, int /*hiddenIcons*/) {
    const auto folder = display.home() / "tint2";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "tint2rc")
        << "panel_items = S\npanel_size = 100% 26\npanel_position = top center\n";
}

void configureXfce(const Display& display, int hiddenIcons) {
    const auto services = display.home() / "services";
    std::filesystem::create_directories(services);
    const std::string service = "org.xfce.Xfconf.service";
    std::filesystem::copy_file("/usr/share/dbus-1/services/" + service, services / service,
                               std::filesystem::copy_options::overwrite_existing);
    const auto folder = display.home() / "xfce4/xfconf/xfce-perchannel-xml";
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / "xfce4-panel.xml");
    file << R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0"><property name="configver" type="int" value="2"/>
<property name="panels" type="array"><value type="int" value="1"/><property name="panel-1" type="empty">
<property name="position" type="string" value="p=6;x=0;y=0"/><property name="length" type="uint" value="100"/>
<property name="position-locked" type="bool" value="true"/><property name="size" type="uint" value="26"/>
<property name="plugin-ids" type="array"><value type="int" value="1"/></property></property></property>
<property name="plugins" type="empty"><property name="plugin-1" type="string" value="systray">)";
    for (const char* list : {"known-legacy-items", "hidden-legacy-items"}) {
        file << "<property name=\"" << list << "\" type=\"array\">";
        for (int number = 0; number < hiddenIcons; ++number)
            file << "<value type=\"string\" value=\"" << numberedIcon(number) << "\"/>";
        file << "</property>";
    }
    file << "</property></property></channel>";
}

void configureLxqt(const Display& display, int /*hiddenIcons*/) {
    const auto folder = display.home() / "lxqt";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "panel.conf")
        << "panels=panel1\n[panel1]\nplugins=statusnotifier,tray\nposition=Top\ndesktop=0\n"
        << "[statusnotifier]\ntype=statusnotifier\n[tray]\ntype=tray\n";
}

bool isInstalled(const std::string& program) {
    std::istringstream folders(std::getenv("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (std::filesystem::exists(std::filesystem::path(folder) / program))
            return true;
    }
    return false;
}

}  // namespace

std::vector<Host> installedHosts() {
    std::vector<Host> hosts = {{"velmo", {velmoProgram}, configureVelmo},
                               {"xfce4-panel", {"xfce4-panel", "--disable-wm-check"}, configureXfce},
                               {"lxqt-panel", {"lxqt-panel"}, configureLxqt},
                               {"tint2", {"tint2"}, configureTint2},
                               {"trayer", {"trayer"}, configureNothing}};
    std::erase_if(hosts, [](const Host& host) {
        return host.command.front() != velmoProgram && !isInstalled(host.command.front());
    });
    return hosts;
}

std::optional<Host> hostNamed(const std::string& name) {
    for (auto& host : installedHosts()) {
        if (host.name == name)
            return host;
    }
    return std::nullopt;
}

}  // namespace velmo::desktop
