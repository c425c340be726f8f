// What the core itself costs, on the simulated desktop.

#include "menubar/menu_bar_manager.h"
#include "preferences/preferences.h"
#include "simulated/simulated_desktop.h"

#include <benchmark/benchmark.h>

#include <string>

namespace velmo {

namespace {

constexpr double iconWidth = 28;

void addIcons(SimulatedDesktop& desktop, std::int64_t count) {
    // All have room, with the toggle left of them.
    desktop.screens().set({SimulatedScreens::withMenuBar({0, 0, 7680, 1080})});
    for (std::int64_t index = 0; index < count; ++index) {
        OtherStatusItem icon;
        icon.identity = "icon-" + std::to_string(index);
        icon.width = iconWidth;
        desktop.statusBar().addOther(icon);
    }
}

void clickTheToggle(benchmark::State& state) {
    SimulatedDesktop desktop;
    addIcons(desktop, state.range(0));
    MenuBarManager manager(Preferences::shared(desktop.userDefaults()), desktop.platform());
    for (auto _ : state) {
        desktop.click("Velmo.Toggle");
        desktop.advance(0);
    }
}
BENCHMARK(clickTheToggle)->Arg(10)->Arg(50)->Arg(200);

void start(benchmark::State& state) {
    SimulatedDesktop desktop;
    const auto preferences = Preferences::shared(desktop.userDefaults());
    for (auto _ : state)
        const MenuBarManager manager(preferences, desktop.platform());
}
BENCHMARK(start);

}  // namespace

}  // namespace velmo
