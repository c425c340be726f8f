#pragma once

#include "geometry.h"
#include "linux/drawing/appearance.h"
#include "text_style.h"

#include <cairo.h>

#include <string>

namespace velmo {

/// How a text is drawn.
struct TextAttributes {
    Font font;
    /// Whose font and scale it is drawn in.
    Appearance appearance;
    /// Pixels; what is longer ends in an ellipsis.
    int widthLimit = 0;
};

/// Draws texts of one line, in any script.
class TextRenderer {
public:
    virtual ~TextRenderer() = default;

    /// Pixels. With monospaced digits it does not depend on which digits the text has.
    virtual int width(const std::string& text, const TextAttributes& attributes) = 0;
    /// Draws the text from the left edge of `area` on, its line in the middle between top and bottom. All in
    /// pixels.
    virtual void draw(cairo_t* context, const std::string& text, const TextAttributes& attributes,
                      const Rect& area, const Color& color) = 0;
};

/// The name and type of the function that makes a module's renderer. Among the shapes that languages give to
/// the same letter, those of `locale` are taken, a name as POSIX has it.
inline constexpr const char* textRendererFunctionName = "velmoMakeTextRenderer";
using MakeTextRenderer = TextRenderer* (*)(const char* locale);

}  // namespace velmo
