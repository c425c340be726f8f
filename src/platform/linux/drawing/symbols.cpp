#include "symbols.h"

#include <map>
#include <numbers>

namespace velmo {

namespace {

/// Symbols are drawn in a square of this side, with the origin at the top left.
constexpr double gridSide = 18;
/// A symbol stands a little taller than the text it accompanies.
constexpr double sideOfPointSize = 1.25;

class Pen {
public:
    Pen(cairo_t* context, double strokeWidth) : context_(context), strokeWidth_(strokeWidth) {
        cairo_set_line_width(context, strokeWidth);
        cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    }

    void line(double x1, double y1, double x2, double y2) const {
        cairo_move_to(context_, x1, y1);
        cairo_line_to(context_, x2, y2);
        cairo_stroke(context_);
    }

    void corner(double x1, double y1, double x2, double y2, double x3, double y3) const {
        cairo_move_to(context_, x1, y1);
        cairo_line_to(context_, x2, y2);
        cairo_line_to(context_, x3, y3);
        cairo_stroke(context_);
    }

    void ring(double x, double y, double radius) const {
        circlePath(x, y, radius);
        cairo_stroke(context_);
    }

    void disc(double x, double y, double radius) const {
        circlePath(x, y, radius);
        cairo_fill(context_);
    }

    void hole(double x, double y, double radius) const {
        cairo_set_operator(context_, CAIRO_OPERATOR_CLEAR);
        disc(x, y, radius);
        cairo_set_operator(context_, CAIRO_OPERATOR_OVER);
    }

    /// A line with clear edges, so that it stands out from what it crosses.
    void slash(double x1, double y1, double x2, double y2) const {
        cairo_set_operator(context_, CAIRO_OPERATOR_CLEAR);
        cairo_set_line_width(context_, strokeWidth_ * 3);
        line(x1, y1, x2, y2);
        cairo_set_operator(context_, CAIRO_OPERATOR_OVER);
        cairo_set_line_width(context_, strokeWidth_);
        line(x1, y1, x2, y2);
    }

    void eyelids() const {
        cairo_move_to(context_, 1.6, 9);
        cairo_curve_to(context_, 3.2, 6.3, 5.8, 4.4, 9, 4.4);
        cairo_curve_to(context_, 12.2, 4.4, 14.8, 6.3, 16.4, 9);
        cairo_curve_to(context_, 14.8, 11.7, 12.2, 13.6, 9, 13.6);
        cairo_curve_to(context_, 5.8, 13.6, 3.2, 11.7, 1.6, 9);
        cairo_close_path(context_);
        cairo_stroke(context_);
    }

private:
    void circlePath(double x, double y, double radius) const {
        cairo_new_path(context_);
        cairo_arc(context_, x, y, radius, 0, 2 * std::numbers::pi);
        cairo_close_path(context_);
    }

    cairo_t* context_;
    double strokeWidth_;
};

constexpr double middle = gridSide / 2;
constexpr double circleRadius = 6.6;
constexpr double dotRadius = 1.15;

template <typename Draw>
void eachOfThreeDots(Draw draw) {
    for (const double x : {middle - 3.3, middle, middle + 3.3})
        draw(x);
}

void eye(const Pen& pen) {
    pen.eyelids();
    pen.disc(middle, middle, 2.5);
}

using Draw = void (*)(const Pen&);

const std::map<std::string, Draw>& symbols() {
    static const std::map<std::string, Draw> table = {
        {"chevron.left", [](const Pen& pen) { pen.corner(11.2, 3.8, 6, 9, 11.2, 14.2); }},
        {"chevron.right", [](const Pen& pen) { pen.corner(6.8, 3.8, 12, 9, 6.8, 14.2); }},
        {"ellipsis.circle",
         [](const Pen& pen) {
             pen.ring(middle, middle, circleRadius);
             eachOfThreeDots([&](double x) { pen.disc(x, middle, dotRadius); });
         }},
        {"ellipsis.circle.fill",
         [](const Pen& pen) {
             pen.disc(middle, middle, circleRadius + 0.85);
             eachOfThreeDots([&](double x) { pen.hole(x, middle, dotRadius + 0.1); });
         }},
        {"circle", [](const Pen& pen) { pen.ring(middle, middle, 5.2); }},
        {"circle.fill", [](const Pen& pen) { pen.disc(middle, middle, 6.05); }},
        {"line.3.horizontal",
         [](const Pen& pen) {
             for (const double y : {4.6, 9.0, 13.4})
                 pen.line(2.6, y, 15.4, y);
         }},
        {"line.3.horizontal.decrease",
         [](const Pen& pen) {
             pen.line(2.6, 4.6, 15.4, 4.6);
             pen.line(4.9, 9, 13.1, 9);
             pen.line(7.2, 13.4, 10.8, 13.4);
         }},
        {"eye", eye},
        {"eye.slash",
         [](const Pen& pen) {
             eye(pen);
             pen.slash(3.4, 15.2, 14.6, 2.8);
         }},
    };
    return table;
}

double strokeWidth(FontWeight weight) {
    switch (weight) {
        case FontWeight::regular:
            return 1.3;
        case FontWeight::medium:
            return 1.5;
        case FontWeight::semibold:
            return 1.75;
        case FontWeight::bold:
            return 2.1;
    }
    return 1.3;
}

}  // namespace

bool isKnownSymbol(const std::string& name) {
    return symbols().contains(name);
}

double symbolSide(const Symbol& symbol) {
    return symbol.pointSize * sideOfPointSize;
}

void drawSymbol(cairo_t* context, const Symbol& symbol) {
    const auto found = symbols().find(symbol.name);
    if (found == symbols().end())
        return;
    cairo_save(context);
    // Drawn aside, because parts of a symbol clear what lies beneath them.
    cairo_push_group(context);
    const double scale = symbolSide(symbol) / gridSide;
    cairo_scale(context, scale, scale);
    cairo_set_source_rgba(context, 0, 0, 0, 1);
    found->second(Pen(context, strokeWidth(symbol.weight)));
    cairo_pattern_t* shape = cairo_pop_group(context);
    cairo_mask(context, shape);
    cairo_pattern_destroy(shape);
    cairo_restore(context);
}

}  // namespace velmo
