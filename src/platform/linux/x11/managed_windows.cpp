#include "managed_windows.h"

#include "linux/x11/window_properties.h"
#include "linux/x11/window_tree.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace velmo::x11 {

using window_properties::isMark;

namespace {

/// A frame has the window in it, or one more window between.
constexpr int managedDepth = 2;
/// In a window, and in all of those: beside what a frame is drawn with. More are not asked.
constexpr std::size_t mostChildren = 16;

}  // namespace

ManagedWindows::ManagedWindows(const Connection& connection)
    : connection_(connection), resourceMask_(xcb_get_setup(connection.raw())->resource_id_mask) {
    const auto& atoms = connection.atoms();
    const auto value = connection.property(connection.root(), atoms.netSupportingWmCheck, XCB_ATOM_WINDOW,
                                           sizeof(xcb_window_t));
    if (value.size() == sizeof(xcb_window_t))
        std::memcpy(&managersWindow_, value.data(), sizeof(xcb_window_t));
}

std::vector<bool> ManagedWindows::contain(const std::vector<xcb_window_t>& windows) const {
    std::vector<bool> managed(windows.size());
    std::vector<Member> members;
    members.reserve(windows.size());
    for (std::size_t index = 0; index < windows.size(); ++index)
        members.push_back({index, windows[index]});
    for (int depth = 0; depth < managedDepth; ++depth)
        members = look(members, managed);
    std::vector<PropertyQuestion> marks;
    marks.reserve(members.size());
    for (const auto& member : members)
        marks.push_back(askForMark(member.window));
    for (std::size_t index = 0; index < members.size(); ++index) {
        if (isMark(marks[index].text()))
            managed[members[index].asked] = true;
    }
    return managed;
}

std::vector<ManagedWindows::Member> ManagedWindows::look(const std::vector<Member>& members,
                                                         std::vector<bool>& managed) const {
    std::vector<std::pair<PropertyQuestion, xcb_query_tree_cookie_t>> questions;
    questions.reserve(members.size());
    for (const auto& member : members)
        questions.emplace_back(askForMark(member.window), xcb_query_tree(connection_.raw(), member.window));
    const auto isAnothers = [this](xcb_window_t child) { return !managerMade(child); };
    std::vector<Member> inside;
    std::vector<std::size_t> counts(managed.size());
    for (std::size_t index = 0; index < members.size(); ++index) {
        const auto& [asked, window] = members[index];
        const auto children = childrenFrom(connection_, questions[index].second);
        if (isMark(questions[index].first.text()) ||
            (managerMade(window) && std::any_of(children.begin(), children.end(), isAnothers)))
            managed[asked] = true;
        for (const auto child : children) {
            if (++counts[asked] <= mostChildren)
                inside.push_back({asked, child});
        }
    }
    std::erase_if(inside, [&](const auto& member) { return managed[member.asked]; });
    return inside;
}

bool ManagedWindows::havePutInto(xcb_window_t parent, xcb_window_t window) const {
    // Managers that give no window of theirs away, or have frames made by a helper, mark at least the window.
    return mayHavePutInto(parent, window) && (managerMade(parent) || isMark(askForMark(window).text()));
}

bool ManagedWindows::managerMade(xcb_window_t window) const {
    return managersWindow_ != XCB_WINDOW_NONE && haveOneMaker(window, managersWindow_);
}

PropertyQuestion ManagedWindows::askForMark(xcb_window_t window) const {
    const auto name = connection_.atoms().wmState;
    return {connection_, window, name, name, sizeof(std::uint32_t)};
}

}  // namespace velmo::x11
