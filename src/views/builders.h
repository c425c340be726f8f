#pragma once

#include "platform/view.h"

namespace velmo {

// Views by short names, so that a description reads like what it shows.

View text(std::string content);
View text(std::vector<TextRun> runs);
/// A symbol by its name, as large as the text around it.
View symbol(std::string name);
/// `pointSize` is the size of the text that the symbol goes with, in points.
View symbol(std::string name, double pointSize, FontWeight weight = FontWeight::regular);
/// A picture that fills its frame.
View resizable(Image image);
View divider();
View spacer();

/// `spacing` is in points; absent: the platform's own.
View hstack(std::optional<double> spacing, Views children,
            VerticalAlignment alignment = VerticalAlignment::center);
View vstack(std::optional<double> spacing, Views children,
            HorizontalAlignment alignment = HorizontalAlignment::center);
View grid(const Grid& grid, Views cells);

/// The symbol stands before the text.
View label(View text, std::string symbolName);
/// The platform's push button, or one of its siblings.
View button(std::string title, std::function<void()> action, ButtonStyle style = ButtonStyle::automatic);
/// A button that looks like the one view, and like the other while it is pressed.
View plainButton(View released, View pressed, std::function<void()> action);
View toggle(std::string title, bool isOn, std::function<void(bool)> onChange);
View picker(Picker picker);
View slider(Slider slider);
View textField(std::string title, std::string content, std::function<void(const std::string&)> onEdit);
View labeledContent(std::string title, View content);

View form(Views sections);
/// Header and footer may be empty.
View section(std::string header, Views rows, std::string footer = {});
/// One view for each tab, in the same order.
View tabView(TabView tabs, Views contents);

/// The same on all sides, in points.
Padding padding(double all);
Padding padding(double horizontal, double vertical);
Font font(TextStyle style);
Foreground foreground(ColorRole role);

}  // namespace velmo
