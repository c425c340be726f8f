#include "hosts.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
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

pid_t parentOf(const std::filesystem::path& process) {
    std::ifstream file(process / "stat");
    std::string line;
    std::getline(file, line);
    // The name before it may contain anything.
    std::istringstream rest(line.substr(line.rfind(')') + 1));
    std::string state;
    pid_t parent = 0;
    rest >> state >> parent;
    return parent;
}

/// A process and its descendants.
std::vector<pid_t> familyOf(pid_t process) {
    std::multimap<pid_t, pid_t> childrenOf;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            childrenOf.emplace(parentOf(entry.path()), std::stoi(name));
    }
    std::vector<pid_t> family = {process};
    for (std::size_t index = 0; index < family.size(); ++index) {
        const auto [begin, end] = childrenOf.equal_range(family[index]);
        for (auto child = begin; child != end; ++child)
            family.push_back(child->second);
    }
    return family;
}

/// The number behind a name in a file of lines such as "Pss: 12 kB".
double fieldOf(const std::filesystem::path& path, const std::string& name) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(name))
            return std::stod(line.substr(name.size()));
    }
    return 0;
}

}  // namespace

std::vector<Host> installedHosts() {
    std::vector<Host> hosts = {{"velmo", {VELMO_PROGRAM}, configureVelmo},
                               {"xfce4-panel", {"xfce4-panel", "--disable-wm-check"}, configureXfce},
                               {"lxqt-panel", {"lxqt-panel"}, configureLxqt},
                               {"tint2", {"tint2"}, configureTint2},
                               {"trayer", {"trayer"}, configureNothing}};
    std::erase_if(hosts, [](const Host& host) {
        return host.command.front() != VELMO_PROGRAM && !isInstalled(host.command.front());
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

double memoryOf(pid_t process) {
    double sum = 0;
    for (const auto member : familyOf(process))
        sum += fieldOf("/proc/" + std::to_string(member) + "/smaps_rollup", "Pss:");
    return sum;
}

double wakeupsOf(pid_t process) {
    double sum = 0;
    for (const auto member : familyOf(process)) {
        std::error_code error;
        const auto folder = "/proc/" + std::to_string(member) + "/task";
        for (const auto& task : std::filesystem::directory_iterator(folder, error))
            sum += fieldOf(task.path() / "status", "voluntary_ctxt_switches:");
    }
    return sum;
}

}  // namespace velmo::desktop
