#include "symbols.h"

#include <cmath>
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

    /// A quarter of a circle, counted clockwise from the lower right one.
    void arc(double x, double y, double radius, int quarter) const {
        cairo_new_path(context_);
        cairo_arc(context_, x, y, radius, quarter * std::numbers::pi / 2,
                  (quarter + 1) * std::numbers::pi / 2);
        cairo_stroke(context_);
    }

    void curve(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) const {
        cairo_move_to(context_, x1, y1);
        cairo_curve_to(context_, x2, y2, x3, y3, x4, y4);
        cairo_stroke(context_);
    }

    void roundedRectangle(double x, double y, double width, double height, double radius) const {
        using std::numbers::pi;
        cairo_new_path(context_);
        cairo_arc(context_, x + width - radius, y + radius, radius, -pi / 2, 0);
        cairo_arc(context_, x + width - radius, y + height - radius, radius, 0, pi / 2);
        cairo_arc(context_, x + radius, y + height - radius, radius, pi / 2, pi);
        cairo_arc(context_, x + radius, y + radius, radius, pi, pi * 3 / 2);
        cairo_close_path(context_);
        cairo_stroke(context_);
    }

    void filledRectangle(double x, double y, double width, double height) const {
        cairo_rectangle(context_, x, y, width, height);
        cairo_fill(context_);
    }

    /// What is drawn meanwhile is taken away from what was drawn before.
    template <typename Work>
    void cut(Work work) const {
        cairo_set_operator(context_, CAIRO_OPERATOR_CLEAR);
        work();
        cairo_set_operator(context_, CAIRO_OPERATOR_OVER);
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

void clockFace(const Pen& pen) {
    pen.ring(middle, middle, circleRadius);
    pen.corner(middle, 5.2, middle, 9.2, 11.8, 10.6);
}

/// Eight teeth around a ring.
void gear(const Pen& pen) {
    constexpr int teeth = 8;
    constexpr double inner = 5.2;
    constexpr double outer = 7.2;
    pen.ring(middle, middle, 4.9);
    pen.ring(middle, middle, 1.9);
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double angle = std::numbers::pi * 2 * tooth / teeth;
        pen.line(middle + inner * std::cos(angle), middle + inner * std::sin(angle),
                 middle + outer * std::cos(angle), middle + outer * std::sin(angle));
    }
}

/// The sides and corners of a rounded square, in dashes.
void dashedSquare(const Pen& pen) {
    constexpr double near = 2.6;
    constexpr double far = gridSide - near;
    constexpr double corner = 2.6;
    pen.arc(near + corner, near + corner, corner, 2);
    pen.arc(far - corner, near + corner, corner, 3);
    pen.arc(far - corner, far - corner, corner, 0);
    pen.arc(near + corner, far - corner, corner, 1);
    for (const double edge : {near, far}) {
        pen.line(7.9, edge, 10.1, edge);
        pen.line(edge, 7.9, edge, 10.1);
    }
}

void stripInRectangle(const Pen& pen) {
    pen.roundedRectangle(2, 3.6, 14, 10.8, 2.2);
    pen.filledRectangle(3.9, 5.5, 10.2, 2.4);
}

void arrowBothWays(const Pen& pen) {
    pen.line(2.4, middle, 15.6, middle);
    pen.corner(5.4, 5.8, 2.2, middle, 5.4, 12.2);
    pen.corner(12.6, 5.8, 15.8, middle, 12.6, 12.2);
}

/// Strokes that are left out of a disc.
template <typename Strokes>
void cutFromDisc(const Pen& pen, Strokes strokes) {
    pen.disc(middle, middle, circleRadius + 0.85);
    pen.cut([&] { strokes(); });
}

/// A digit from 1 to 4 as strokes, in the middle of a ring.
void numberInCircle(const Pen& pen, int number) {
    pen.ring(middle, middle, 7.3);
    switch (number) {
        case 1:
            pen.corner(7.6, 6.9, 9.4, 5.6, 9.4, 12.4);
            break;
        case 2:
            pen.curve(6.9, 7.4, 7, 5.1, 11.2, 4.9, 11, 7.5);
            pen.corner(11, 7.5, 7, 12.3, 11.3, 12.3);
            break;
        case 3:
            pen.curve(7, 6.6, 7.6, 4.9, 11, 5, 10.9, 7.1);
            pen.curve(10.9, 7.1, 10.8, 8.8, 9.4, 8.8, 8.7, 8.8);
            pen.curve(8.7, 8.8, 9.8, 8.7, 11.3, 9, 11.2, 10.6);
            pen.curve(11.2, 10.6, 11, 13, 7.4, 13, 6.8, 11.1);
            break;
        default:
            pen.corner(10.4, 12.4, 10.4, 5.6, 6.6, 10.6);
            pen.line(6.6, 10.6, 11.8, 10.6);
            break;
    }
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
        {"1.circle", [](const Pen& pen) { numberInCircle(pen, 1); }},
        {"2.circle", [](const Pen& pen) { numberInCircle(pen, 2); }},
        {"3.circle", [](const Pen& pen) { numberInCircle(pen, 3); }},
        {"4.circle", [](const Pen& pen) { numberInCircle(pen, 4); }},
        {"app.dashed", dashedSquare},
        {"arrow.left.and.right", arrowBothWays},
        {"checkmark.circle.fill",
         [](const Pen& pen) { cutFromDisc(pen, [&] { pen.corner(5.9, 9.3, 8.1, 11.5, 12.2, 6.5); }); }},
        {"clock", clockFace},
        {"exclamationmark.circle.fill",
         [](const Pen& pen) {
             cutFromDisc(pen, [&] {
                 pen.line(middle, 5.2, middle, 9.6);
                 pen.line(middle, 12.5, middle, 12.6);
             });
         }},
        {"gearshape", gear},
        {"rectangle.topthird.inset.filled", stripInRectangle},
        {"xmark.circle.fill",
         [](const Pen& pen) {
             cutFromDisc(pen, [&] {
                 pen.line(6.5, 6.5, 11.5, 11.5);
                 pen.line(11.5, 6.5, 6.5, 11.5);
             });
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
