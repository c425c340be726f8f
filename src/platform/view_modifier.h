#pragma once

#include "text_style.h"

#include <optional>
#include <string>
#include <variant>

namespace velmo {

/// Points.
struct Insets {
    double top = 0;
    double leading = 0;
    double bottom = 0;
    double trailing = 0;

    bool operator==(const Insets&) const = default;
};

enum class HorizontalAlignment { leading, center, trailing };
enum class VerticalAlignment { top, center, firstTextBaseline, bottom };

/// Room around a view.
struct Padding {
    Insets insets;

    bool operator==(const Padding&) const = default;
};

/// The extent that a view takes, in points. What is absent stays the view's own. The view is
/// centred vertically and aligned horizontally where the frame is larger than it.
struct Frame {
    std::optional<double> width;
    std::optional<double> height;
    std::optional<double> minWidth;
    /// Bounds what the view is offered; one that cannot shrink that far stays wider.
    std::optional<double> maxWidth;
    HorizontalAlignment alignment = HorizontalAlignment::center;

    bool operator==(const Frame&) const = default;
};

enum class ShapeKind { roundedRectangle, circle };

/// A filled shape behind a view: over its whole extent, or the largest circle inside of it.
struct Background {
    ShapeKind shape = ShapeKind::roundedRectangle;
    /// Points; rounded rectangles only.
    double cornerRadius = 0;
    SemanticColor color;

    bool operator==(const Background&) const = default;
};

/// The colour of texts and symbols.
struct Foreground {
    SemanticColor color;

    bool operator==(const Foreground&) const = default;
};

/// Keeps a text in one line. Where there is less room than it wants it gets smaller, down to that share of
/// its size, and from there on ends in an ellipsis.
struct SingleLine {
    double minimumScale = 1;

    bool operator==(const SingleLine&) const = default;
};

/// A tooltip.
struct Help {
    std::string text;

    bool operator==(const Help&) const = default;
};

struct Disabled {
    bool isDisabled = true;

    bool operator==(const Disabled&) const = default;
};

/// What assistive programs call the view, where its own text does not say it.
struct AccessibilityLabel {
    std::string text;

    bool operator==(const AccessibilityLabel&) const = default;
};

/// Keys without modifiers that press a button while its window has the keyboard.
enum class ShortcutKey { pageUp, pageDown, home };

struct KeyboardShortcut {
    ShortcutKey key = ShortcutKey::home;

    bool operator==(const KeyboardShortcut&) const = default;
};

/// Something that changes a view. A view's modifiers apply in their order, each to the result of those before
/// it: padding and then a background colours the padding, too.
using Modifier = std::variant<Padding, Frame, Background, Font, Foreground, SingleLine, Help, Disabled,
                              AccessibilityLabel, KeyboardShortcut>;

}  // namespace velmo
