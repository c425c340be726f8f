#pragma once

#include "image.h"
#include "view_modifier.h"

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace velmo {

// What a view can be. Handlers take no part in comparisons: two views are equal where they look the same.

/// Takes its frame and shows nothing.
struct EmptyView {
    bool operator==(const EmptyView&) const = default;
};

struct TextRun {
    std::string text;
    bool isBold = false;

    bool operator==(const TextRun&) const = default;
};

/// Wraps where it is given less width than it wants; "\n" breaks a line.
struct Text {
    std::vector<TextRun> runs;

    bool operator==(const Text&) const = default;
};

struct ImageView {
    Image image;
    /// Fills its frame instead of keeping its own size.
    bool isResizable = false;

    bool operator==(const ImageView&) const = default;
};

/// A hairline across the direction of the stack around it.
struct Divider {
    bool operator==(const Divider&) const = default;
};

/// Takes what room is left in the direction of the stack around it.
struct Spacer {
    bool operator==(const Spacer&) const = default;
};

/// Children from leading to trailing.
struct HStack {
    VerticalAlignment alignment = VerticalAlignment::center;
    /// Points between neighbours; absent: the platform's own distance.
    std::optional<double> spacing;

    bool operator==(const HStack&) const = default;
};

/// Children from top to bottom.
struct VStack {
    HorizontalAlignment alignment = HorizontalAlignment::center;
    /// Points between neighbours; absent: the platform's own distance.
    std::optional<double> spacing;

    bool operator==(const VStack&) const = default;
};

/// Children row by row in columns of a fixed width, each centred in its cell. The last row may be short.
struct Grid {
    int columnCount = 1;
    /// Points.
    double columnWidth = 0;
    double columnSpacing = 0;
    double rowSpacing = 0;

    bool operator==(const Grid&) const = default;
};

/// A symbol before a text. The child is the text.
struct Label {
    Image image;

    bool operator==(const Label&) const = default;
};

enum class ButtonStyle {
    /// The platform's push button.
    automatic,
    /// The label alone, in the platform's colour for things that can be pressed.
    borderless,
    /// Nothing but the label: it brings its own look.
    plain,
};

/// The first child is the label; a second one, of the same extent, takes its place while the button is
/// pressed.
struct Button {
    ButtonStyle style = ButtonStyle::automatic;
    std::function<void()> action;

    bool operator==(const Button& other) const { return style == other.style; }
};

/// A titled switch. It shows what it is told: after `onChange` it returns to `isOn` unless told otherwise.
struct Toggle {
    std::string title;
    bool isOn = false;
    std::function<void(bool)> onChange;

    bool operator==(const Toggle& other) const { return title == other.title && isOn == other.isOn; }
};

struct PickerOption {
    std::string tag;
    std::string title;
    /// Shown below the title; empty for none. Only lists and radio groups have room for it.
    std::string description;

    bool operator==(const PickerOption&) const = default;
};

enum class PickerStyle { menu, radioGroup };

/// One choice of several.
struct Picker {
    std::string title;
    std::vector<PickerOption> options;
    /// The tag of the chosen option.
    std::string selection;
    PickerStyle style = PickerStyle::menu;
    std::function<void(const std::string&)> onSelect;

    bool operator==(const Picker& other) const {
        return title == other.title && options == other.options && selection == other.selection &&
               style == other.style;
    }
};

struct Slider {
    double value = 0;
    double minimum = 0;
    double maximum = 1;
    double step = 1;
    std::function<void(double)> onChange;

    bool operator==(const Slider& other) const {
        return value == other.value && minimum == other.minimum && maximum == other.maximum &&
               step == other.step;
    }
};

/// A titled line of editable text.
struct TextField {
    std::string title;
    std::string text;
    /// Called after each edit.
    std::function<void(const std::string&)> onEdit;

    bool operator==(const TextField& other) const { return title == other.title && text == other.text; }
};

/// A title, and at the far end of the row the child that it names.
struct LabeledContent {
    std::string title;

    bool operator==(const LabeledContent&) const = default;
};

/// The children are sections. Scrolls where it has less height than it wants.
struct Form {
    bool operator==(const Form&) const = default;
};

/// A group of rows, which are the children, under a header and above a footer; each empty for none.
struct Section {
    std::string header;
    std::string footer;

    bool operator==(const Section&) const = default;
};

struct TabItem {
    std::string tag;
    std::string title;
    Image image;

    bool operator==(const TabItem&) const = default;
};

/// A row of tabs and the content of the chosen one. There is one child for each tab, in the same order.
struct TabView {
    std::vector<TabItem> tabs;
    /// The tag of the chosen tab.
    std::string selection;
    std::function<void(const std::string&)> onSelect;

    bool operator==(const TabView& other) const { return tabs == other.tabs && selection == other.selection; }
};

using ViewContent =
    std::variant<EmptyView, Text, ImageView, Divider, Spacer, HStack, VStack, Grid, Label, Button, Toggle,
                 Picker, Slider, TextField, LabeledContent, Form, Section, TabView>;

}  // namespace velmo
