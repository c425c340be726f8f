#include "scenarios/simulated/simulated_scenario_window.h"

#include "views/view_search.h"

#include <algorithm>
#include <stdexcept>

namespace velmo {
namespace {

template <typename Content>
const Content& contentOf(const View& root, const std::string& name) {
    const View* found = find<Content>(root, name);
    if (found == nullptr)
        throw std::logic_error("there is no \"" + name + '"');
    return std::get<Content>(found->content);
}

}  // namespace

View SimulatedScenarioWindow::page() {
    if (!isShown())
        throw std::logic_error("the window is not shown");
    const View root = content();
    const auto* tabs = std::get_if<TabView>(&root.content);
    if (tabs == nullptr)
        return root;
    const auto chosen = std::find_if(tabs->tabs.begin(), tabs->tabs.end(),
                                     [&](const TabItem& tab) { return tab.tag == tabs->selection; });
    return root.children.at(static_cast<std::size_t>(chosen - tabs->tabs.begin()));
}

bool SimulatedScenarioWindow::shows(const std::string& text) {
    return velmo::shows(page(), text);
}

std::vector<std::string> SimulatedScenarioWindow::texts() {
    return textsOf(page());
}

std::vector<std::string> SimulatedScenarioWindow::tabs() {
    std::vector<std::string> titles;
    const View root = content();
    for (const TabItem& tab : std::get<TabView>(root.content).tabs)
        titles.push_back(tab.title);
    return titles;
}

std::string SimulatedScenarioWindow::chosenTab() {
    const View root = content();
    const auto& tabs = std::get<TabView>(root.content);
    for (const TabItem& tab : tabs.tabs) {
        if (tab.tag == tabs.selection)
            return tab.title;
    }
    return "";
}

void SimulatedScenarioWindow::chooseTab(const std::string& title) {
    velmo::chooseTab(content(), title);
    runPosted();
}

bool SimulatedScenarioWindow::hasButton(const std::string& button) {
    return find<Button>(page(), button) != nullptr;
}

void SimulatedScenarioWindow::press(const std::string& button) {
    velmo::press(page(), button);
    runPosted();
}

bool SimulatedScenarioWindow::isOn(const std::string& toggle) {
    return contentOf<Toggle>(page(), toggle).isOn;
}

void SimulatedScenarioWindow::switchOver(const std::string& toggle) {
    velmo::switchOver(page(), toggle);
    runPosted();
}

std::string SimulatedScenarioWindow::chosen(const std::string& picker) {
    const View root = page();
    const auto& found = contentOf<Picker>(root, picker);
    for (const PickerOption& option : found.options) {
        if (option.tag == found.selection)
            return option.title;
    }
    return "";
}

void SimulatedScenarioWindow::choose(const std::string& picker, const std::string& option) {
    velmo::choose(page(), picker, option);
    runPosted();
}

std::string SimulatedScenarioWindow::textIn(const std::string& field) {
    return contentOf<TextField>(page(), field).text;
}

void SimulatedScenarioWindow::type(const std::string& field, const std::string& text) {
    edit(page(), field, text);
    runPosted();
}

double SimulatedScenarioWindow::position(const std::string& slider) {
    return contentOf<Slider>(page(), slider).value;
}

void SimulatedScenarioWindow::moveSlider(const std::string& slider, double value) {
    velmo::moveSlider(page(), slider, value);
    runPosted();
}

bool SimulatedScenarioWindow::pressKey(std::uint16_t keyCode, ModifierFlags flags,
                                       const std::string& characters) {
    Event event{EventType::keyDown, flags};
    event.keyCode = keyCode;
    event.charactersIgnoringModifiers = characters;
    const bool isTaken = !desktop_.events().deliverLocally(event);
    runPosted();
    return isTaken;
}

bool SimulatedScenarioSettings::isShown() {
    const auto& windows = desktop().windows().windows();
    return !windows.empty() && windows.front()->isVisible();
}

void SimulatedScenarioSettings::close() {
    desktop().windows().windows().front()->close();
    runPosted();
}

View SimulatedScenarioSettings::content() {
    return desktop().windows().windows().front()->content();
}

bool SimulatedScenarioCalendar::isShown() {
    const auto& popovers = desktop().windows().popovers();
    return !popovers.empty() && popovers.back()->isShown();
}

void SimulatedScenarioCalendar::close() {
    desktop().windows().popovers().back()->clickOutside();
    runPosted();
}

View SimulatedScenarioCalendar::content() {
    return desktop().windows().popovers().back()->content();
}

void SimulatedScenarioPanel::close() {
    desktop().pressKey(escapeKeyCode);
    runPosted();
}

}  // namespace velmo
