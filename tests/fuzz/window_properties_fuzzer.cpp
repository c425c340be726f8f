#include "linux/x11/bar_strut.h"
#include "linux/x11/dock_strut.h"
#include "linux/x11/property_value.h"
#include "linux/x11/window_properties.h"
#include "property_answer.h"
#include "require.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace velmo;
using namespace x11;

constexpr std::size_t mostManaged = 256;
constexpr int largest = 16384;

std::vector<std::uint32_t> numbers(fuzz::Bytes& bytes) {
    return numbersIn(fuzz::PropertyAnswer(bytes).get());
}

PixelRect area(fuzz::Bytes& bytes) {
    const auto place = [&] { return static_cast<int>(bytes.number(2) % (2 * largest)) - largest / 2; };
    const auto length = [&] { return 1 + static_cast<int>(bytes.number(2) % largest); };
    return {place(), place(), length(), length()};
}

/// No two of them alike, as the server gives them out, and few enough that a list may hold all.
Atoms atoms() {
    Atoms atoms;
    xcb_atom_t next = 0;
    for (auto* atom :
         {&atoms.netWmStateMaximizedHorz, &atoms.netWmStateMaximizedVert, &atoms.netWmWindowTypeDesktop,
          &atoms.netWmWindowTypeDock, &atoms.netWmWindowTypeNormal, &atoms.netWmWindowTypeMenu,
          &atoms.netWmWindowTypePopupMenu, &atoms.netWmWindowTypeDropdownMenu, &atoms.netWmWindowTypeCombo})
        *atom = ++next;
    return atoms;
}

/// Whatever docks reserve, they leave something of the monitor, and all of its upper edge.
void reserve(fuzz::Bytes& bytes) {
    std::vector<DockStrut> docks;
    for (auto count = bytes.below(4); count > 0; --count) {
        const auto partial = numbers(bytes);
        const auto whole = numbers(bytes);
        const auto dock = DockStrut::from(partial, whole);
        fuzz::require(dock.has_value() == (partial.size() >= 12 || whole.size() >= 4));
        if (dock)
            docks.push_back(*dock);
    }
    const auto monitor = area(bytes);
    const auto left = spaceLeftBy(docks, monitor, area(bytes));
    fuzz::require(left.width > 0 && left.height > 0 && left.y == monitor.y);
    fuzz::require(left.overlapWith(monitor) == std::int64_t{left.width} * left.height);
}

/// Whoever manages windows, and wherever monitors lie: what the bar reserves begins before it ends.
void reserveBar(fuzz::Bytes& bytes) {
    const std::string names[] = {"Fluxbox", "IceWM", "i3", "Metacity", "Openbox", "Xfwm4", ""};
    const auto name =
        names[bytes.below(std::size(names))] + textIn(fuzz::PropertyAnswer(bytes).get(), XCB_ATOM_STRING);
    std::vector<PixelRect> monitors = {area(bytes)};
    for (auto count = bytes.below(4); count > 0; --count)
        monitors.push_back(area(bytes));
    auto bar = monitors.front();
    bar.height = 24;
    const auto strut = StrutReader::named(name).strutFor(bar, monitors, 2 * largest);
    constexpr std::size_t depths = 4;
    for (std::size_t edge = 0; edge < depths; ++edge)
        fuzz::require(strut.at(depths + 2 * edge) <= strut.at(depths + 2 * edge + 1));
}

}  // namespace

/// Properties that any program may have written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Atoms known = atoms();
    fuzz::Bytes bytes(data, size);
    const auto states = numbers(bytes);
    fuzz::require(!window_properties::isMaximized(known, states) || states.size() >= 2);
    const auto hints = numbers(bytes);
    const auto types = numbers(bytes);
    fuzz::require(!window_properties::wantsToBeBare(known, hints, types, numbers(bytes)) || hints[2] == 0);

    xcb_get_window_attributes_reply_t attributes{};
    attributes.map_state = bytes.byte();
    attributes.override_redirect = bytes.byte();
    attributes.save_under = bytes.byte();
    attributes._class = XCB_WINDOW_CLASS_INPUT_OUTPUT;
    fuzz::require(!window_properties::looksLikeMenu(known, attributes, types) ||
                  attributes.override_redirect != 0);

    window_properties::isMark(textIn(fuzz::PropertyAnswer(bytes).get(), XCB_ATOM_STRING));
    const auto windows = numbers(bytes);
    const xcb_window_t first = bytes.byte();
    const auto isWanted = [](xcb_window_t window) { return window % 8 != 7; };
    const auto managed = window_properties::managedAmong(windows, first, isWanted);
    const bool hasFirst = isWanted(first) && window_properties::isAmong(windows, first);
    fuzz::require(managed.size() <= mostManaged && std::all_of(managed.begin(), managed.end(), isWanted));
    fuzz::require(!hasFirst || managed.front() == first);

    reserve(bytes);
    reserveBar(bytes);
    return 0;
}
