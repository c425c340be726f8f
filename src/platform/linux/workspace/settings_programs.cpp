#include "settings_programs.h"

#include "linux/process/split_list.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace velmo {

namespace {

struct Entry {
    /// In lower case.
    std::string_view desktop;
    SettingsPane pane;
    std::string_view command;
};

using enum SettingsPane;

constexpr std::array entries = {
    Entry{"gnome", dateAndTime, "gnome-control-center datetime"},
    Entry{"gnome", privacy, "gnome-control-center privacy"},
    Entry{"gnome", overview, "gnome-control-center"},
    Entry{"budgie", dateAndTime, "budgie-control-center datetime"},
    Entry{"budgie", privacy, "budgie-control-center privacy"},
    Entry{"budgie", overview, "budgie-control-center"},
    Entry{"unity", dateAndTime, "unity-control-center datetime"},
    Entry{"unity", privacy, "unity-control-center privacy"},
    Entry{"unity", overview, "unity-control-center"},
    Entry{"kde", dateAndTime, "systemsettings kcm_clock"},
    Entry{"kde", dateAndTime, "systemsettings5 kcm_clock"},
    Entry{"kde", dateAndTime, "kcmshell6 kcm_clock"},
    Entry{"kde", dateAndTime, "kcmshell5 kcm_clock"},
    Entry{"kde", overview, "systemsettings"},
    Entry{"kde", overview, "systemsettings5"},
    Entry{"xfce", dateAndTime, "xfce4-time-settings"},
    Entry{"xfce", overview, "xfce4-settings-manager"},
    Entry{"lxqt", dateAndTime, "lxqt-admin-time"},
    Entry{"lxqt", dateAndTime, "lxqt-config-date"},
    Entry{"lxqt", overview, "lxqt-config"},
    Entry{"mate", dateAndTime, "mate-time-admin"},
    Entry{"mate", overview, "mate-control-center"},
    Entry{"x-cinnamon", dateAndTime, "cinnamon-settings calendar"},
    Entry{"x-cinnamon", privacy, "cinnamon-settings privacy"},
    Entry{"x-cinnamon", overview, "cinnamon-settings"},
    Entry{"cinnamon", dateAndTime, "cinnamon-settings calendar"},
    Entry{"cinnamon", privacy, "cinnamon-settings privacy"},
    Entry{"cinnamon", overview, "cinnamon-settings"},
    Entry{"pantheon", overview, "io.elementary.switchboard"},
    Entry{"deepin", overview, "dde-control-center"},
};

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return text;
}

}  // namespace

std::vector<std::vector<std::string>> settingsCommands(const std::string& desktops, SettingsPane pane) {
    std::vector<std::vector<std::string>> commands;
    for (const auto& name : splitList(lowerCase(desktops), ':')) {
        const auto add = [&](SettingsPane wanted) {
            for (const auto& entry : entries) {
                if (entry.desktop == name && entry.pane == wanted)
                    commands.push_back(splitList(entry.command, ' '));
            }
        };
        add(pane);
        // All settings are nearer to the wanted ones than none.
        if (pane != overview)
            add(overview);
    }
    return commands;
}

}  // namespace velmo
