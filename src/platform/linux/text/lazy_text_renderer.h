#pragma once

#include "linux/text/text_renderer.h"

#include <memory>
#include <string>
#include <utility>

namespace velmo {

/// Loads the renderer with the first text. Where its module is missing, texts have no width and do not show.
class LazyTextRenderer : public TextRenderer {
public:
    explicit LazyTextRenderer(std::string locale) : locale_(std::move(locale)) {}

    int width(const std::string& text, const TextAttributes& attributes) override;
    void draw(cairo_t* context, const std::string& text, const TextAttributes& attributes, const Rect& area,
              const Color& color) override;

private:
    TextRenderer* get();

    std::string locale_;
    std::unique_ptr<TextRenderer> renderer_;
    bool tried_ = false;
};

}  // namespace velmo
