#include "hosts.h"

#include "built_files.h"
#include "bus_items.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace velmo::desktop {

namespace {

void configureVelmo(const Display& display, const Setup& setup) {
    nlohmann::json order = {"Velmo.Toggle", "Velmo.Clock", "Velmo.Divider"};
    for (int number = 0; number < setup.hiddenItems; ++number)
        order.push_back(setup.kind == Kind::tray ? itemName(number) + ".Bench" : BusItems::identity(number));
    nlohmann::json defaults = {{"statusItemOrder", order},
                               {"autoRehide", false},
                               {"clockEnabled", setup.clock},
                               {"clockFormat", "HH:mm"}};
    defaults.update(setup.defaults);
    display.writeDefaults(defaults);
}

void configureNothing(const Display& /*display*/, const Setup& /*setup*/) {}

std::ofstream settingsFile(const std::filesystem::path& folder, const std::string& name) {
    std::filesystem::create_directories(folder);
    return std::ofstream(folder / name);
}

void configureTint2(const Display& display, const Setup& setup) {
    settingsFile(display.home() / "tint2", "tint2rc")
        << "panel_items = " << (setup.clock ? "SC" : "S")
        << "\npanel_size = 100% 26\npanel_position = top center\ntime1_format = %H:%M\n"
        << "clock_font_color = #ffffff 100\n";
}

void configureXfce(const Display& display, const Setup& setup) {
    const auto services = display.home() / "services";
    std::filesystem::create_directories(services);
    const std::string service = "org.xfce.Xfconf.service";
    std::filesystem::copy_file("/usr/share/dbus-1/services/" + service, services / service,
                               std::filesystem::copy_options::overwrite_existing);
    auto file = settingsFile(display.home() / "xfce4/xfconf/xfce-perchannel-xml", "xfce4-panel.xml");
    file << R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0"><property name="configver" type="int" value="2"/>
<property name="panels" type="array"><value type="int" value="1"/><property name="panel-1" type="empty">
<property name="position" type="string" value="p=6;x=0;y=0"/><property name="length" type="uint" value="100"/>
<property name="position-locked" type="bool" value="true"/><property name="size" type="uint" value="26"/>
<property name="plugin-ids" type="array">)";
    if (setup.clock)
        file << R"(<value type="int" value="2"/>)";
    file << R"(<value type="int" value="1"/></property></property></property>
<property name="plugins" type="empty"><property name="plugin-2" type="string" value="clock">
<property name="mode" type="uint" value="2"/><property name="digital-layout" type="uint" value="3"/>
<property name="digital-time-format" type="string" value="%R"/></property>
<property name="plugin-1" type="string" value="systray">)";
    const auto list = [&](const std::string& name, int count) {
        file << "<property name=\"" << name << "\" type=\"array\">";
        for (int number = 0; number < count; ++number)
            file << "<value type=\"string\" value=\"" << itemName(number) << "\"/>";
        file << "</property>";
    };
    for (const auto kind : {Kind::tray, Kind::bus}) {
        const std::string items = kind == Kind::tray ? "legacy-items" : "items";
        // With hundreds that it meets for the first time it forgets some.
        list("known-" + items, 201);
        list("hidden-" + items, kind == setup.kind ? setup.hiddenItems : 0);
    }
    file << "</property></property></channel>";
}

void configureLxqt(const Display& display, const Setup& setup) {
    auto file = settingsFile(display.home() / "lxqt", "panel.conf");
    file << "panels=panel1\n[panel1]\nplugins=statusnotifier,tray" << (setup.clock ? ",worldclock" : "")
         << "\nposition=Top\ndesktop=0\n[tray]\ntype=tray\n"
         << "[worldclock]\ntype=worldclock\nuseAdvancedManualFormat=true\ncustomFormat=HH:mm\n"
         << "[statusnotifier]\ntype=statusnotifier\n";
    // It hides none of the tray.
    if (setup.kind == Kind::bus && setup.hiddenItems > 0) {
        file << "hideList=" << itemName(0);
        for (int number = 1; number < setup.hiddenItems; ++number)
            file << ", " << itemName(number);
        file << '\n';
    }
}

bool isInstalled(const std::string& program) {
    std::istringstream folders(std::getenv("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (std::filesystem::exists(std::filesystem::path(folder) / program))
            return true;
    }
    return false;
}

struct Hosts {
    std::vector<Host> installed = {
        {"Velmo", {velmoProgram}, true, true, false, configureVelmo},
        {"xfce4-panel", {"xfce4-panel", "--disable-wm-check"}, true, true, true, configureXfce},
        {"lxqt-panel", {"lxqt-panel"}, true, true, true, configureLxqt},
        {"tint2", {"tint2"}, false, true, false, configureTint2},
        {"trayer", {"trayer"}, false, false, false, configureNothing}};
    std::vector<std::string> missing = {};

    Hosts() {
        std::erase_if(installed, [&](const Host& host) {
            const bool isMissing = !host.isVelmo() && !isInstalled(host.command.front());
            if (isMissing)
                missing.push_back(host.name);
            return isMissing;
        });
    }
};

const Hosts& hosts() {
    static const Hosts known;
    return known;
}

}  // namespace

const std::vector<Host>& installedHosts() {
    return hosts().installed;
}

const std::vector<std::string>& missingHosts() {
    return hosts().missing;
}

const Host* hostNamed(const std::string& name) {
    const auto& installed = installedHosts();
    const auto found =
        std::find_if(installed.begin(), installed.end(), [&](const Host& host) { return host.name == name; });
    return found == installed.end() ? nullptr : &*found;
}

}  // namespace velmo::desktop
