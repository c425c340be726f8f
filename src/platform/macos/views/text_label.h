#pragma once

#include "macos/appkit/ns_text_field.h"
#include "placed.h"
#include "view_content.h"
#include "view_context.h"

#include <string>

namespace velmo::macos {

/// A text on a surface.
class TextLabel {
public:
    /// What it looks like; two alike need no work.
    struct Look {
        Font font;
        SemanticColor color;
        std::optional<SingleLine> singleLine = {};

        bool operator==(const Look&) const = default;
    };

    explicit TextLabel(const NSView& surface) : field_(surface, NSTextField::label()) {}

    void display(const Text& text, const Look& look);
    void display(const std::string& text, const Look& look) { display(Text{{{text, false}}}, look); }
    /// What it wants in that width, which may be unlimited.
    Size sizeThatFits(double width) const;
    /// Points on the surface.
    void place(const Rect& area);
    double firstBaseline() const;
    bool isEmpty() const;

    const NSTextField& view() const { return *field_; }

private:
    Size measured(double width) const;
    /// In that share of the font's size.
    void show(double scale);
    NSAttributedString attributed(const Font& font) const;

    Placed<NSTextField> field_;
    Text text_;
    Look look_;
    double scale_ = 0;
    /// In the full size and one line.
    Size whole_;
};

/// How a text looks there.
TextLabel::Look lookIn(const ViewContext& context);

}  // namespace velmo::macos
