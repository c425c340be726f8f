#include "accessible_tree.h"

#include "built_files.h"
#include "bus_program.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace velmo::desktop {

namespace {

AccessibleElement elementFrom(std::istream& line) {
    AccessibleElement element;
    std::getline(line, element.role, '\t');
    std::getline(line, element.name, '\t');
    std::getline(line, element.description, '\t');
    auto& place = element.place;
    line >> place.x >> place.y >> place.width >> place.height;
    return element;
}

}  // namespace

AccessibleTree::AccessibleTree(const Environment& environment)
    : environment_(environment),
      launcher_({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately", "--a11y=1"}, environment) {
    BusProgram bystander(environment_.at("DBUS_SESSION_BUS_ADDRESS"));
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!bystander.isTaken("org.a11y.Bus")) {
        if (std::chrono::steady_clock::now() > limit)
            throw std::runtime_error("the bus of assistive programs does not start");
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

std::string AccessibleTree::client(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command = {"/usr/bin/python3",
                                        std::string(clientScripts) + "/accessible_tree.py", "velmo"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return outputOf(command, environment_);
}

std::vector<AccessibleElement> AccessibleTree::elementsOf(const std::string& windowName) const {
    std::vector<AccessibleElement> elements;
    std::istringstream lines(client({}));
    bool isInside = false;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream rest(line);
        std::string depth;
        std::getline(rest, depth, '\t');
        auto element = elementFrom(rest);
        if (depth == "1")
            isInside = element.name == windowName;
        if (isInside)
            elements.push_back(std::move(element));
    }
    return elements;
}

std::vector<std::string> AccessibleTree::namesIn(const std::string& windowName) const {
    std::vector<std::string> names;
    for (const auto& element : elementsOf(windowName)) {
        if (!element.name.empty())
            names.push_back(element.roleAndName());
    }
    return names;
}

std::vector<AccessibleElement> AccessibleTree::controlsOf(const std::string& windowName) const {
    const std::set<std::string> roles = {"check box",    "combo box", "push button",
                                         "radio button", "slider",    "text"};
    auto elements = elementsOf(windowName);
    std::erase_if(elements, [&](const auto& element) { return !roles.contains(element.role); });
    return elements;
}

std::optional<AccessibleElement> AccessibleTree::element(const std::string& windowName,
                                                         const std::string& roleAndName) const {
    const auto elements = elementsOf(windowName);
    const auto found = std::find_if(elements.begin(), elements.end(), [&](const auto& element) {
        return element.roleAndName() == roleAndName;
    });
    return found == elements.end() ? std::nullopt : std::optional(*found);
}

}  // namespace velmo::desktop
