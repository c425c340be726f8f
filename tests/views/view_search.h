#pragma once

#include "platform/view.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmo {

// Finds things in a described view as a person does, by what they say, and uses them. A view "says" its text,
// title, tooltip, accessibility label or symbol name; a button also says what its label says. Released
// buttons are looked at, not their pressed looks.

/// Every view that fulfils the condition, outer ones before inner ones, in the order of the children.
template <typename Condition>
std::vector<const View*> findAll(const View& root, const Condition& condition);

/// Every view with content of that kind.
template <typename Content>
std::vector<const View*> findAll(const View& root) {
    return findAll(root, [](const View& view) { return std::holds_alternative<Content>(view.content); });
}

bool says(const View& view, std::string_view what);

/// The first view of that kind that says it. Null where there is none.
template <typename Content>
const View* find(const View& root, std::string_view what) {
    const auto found = findAll(root, [what](const View& view) {
        return std::holds_alternative<Content>(view.content) && says(view, what);
    });
    return found.empty() ? nullptr : found.front();
}

/// Whether any view says it.
bool shows(const View& root, std::string_view what);

/// The texts of a view without their styles, outer and earlier ones first.
std::vector<std::string> textsOf(const View& root);
std::string textOf(const Text& text);

/// The last modifier of that kind, which is the outermost. Absent where there is none.
template <typename Kind>
std::optional<Kind> modifierOf(const View& view) {
    for (auto modifier = view.modifiers.rbegin(); modifier != view.modifiers.rend(); ++modifier) {
        if (const auto* found = std::get_if<Kind>(&*modifier))
            return *found;
    }
    return std::nullopt;
}

bool isDisabled(const View& view);
std::string toolTipOf(const View& view);

// What a user does. Each fails the test and does nothing where there is no such control, or it is disabled.

void press(const View& root, std::string_view button);
/// Switches to the other state.
void switchOver(const View& root, std::string_view toggle);
/// `option` is the title of an option.
void choose(const View& root, std::string_view picker, std::string_view option);
void chooseTab(const View& root, std::string_view title);
void moveSlider(const View& root, std::string_view slider, double value);
void edit(const View& root, std::string_view textField, const std::string& text);
/// Presses the button with that key.
void pressShortcut(const View& root, ShortcutKey key);

template <typename Condition>
std::vector<const View*> findAll(const View& root, const Condition& condition) {
    std::vector<const View*> found;
    if (condition(root))
        found.push_back(&root);
    const std::size_t count =
        std::holds_alternative<Button>(root.content) && !root.children.empty() ? 1 : root.children.size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto inner = findAll(root.children[i], condition);
        found.insert(found.end(), inner.begin(), inner.end());
    }
    return found;
}

}  // namespace velmo
