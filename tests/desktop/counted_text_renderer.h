#pragma once

#include "linux/text/pango/pango_text_renderer.h"

#include <string>

namespace velmo::desktop {

/// The real renderer, which tells how often it has drawn.
class CountedTextRenderer : public TextRenderer {
public:
    int width(const std::string& text, const TextAttributes& attributes) override {
        return renderer_.width(text, attributes);
    }
    void draw(cairo_t* context, const std::string& text, const TextAttributes& attributes, const Rect& area,
              const Color& color) override {
        ++drawings_;
        renderer_.draw(context, text, attributes, area, color);
    }

    int drawings() const { return drawings_; }

private:
    PangoTextRenderer renderer_{"C"};
    int drawings_ = 0;
};

}  // namespace velmo::desktop
