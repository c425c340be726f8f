#include "lazy_text_renderer.h"

#include "linux/module/module.h"

#include <utility>

namespace velmo {

namespace {

constexpr const char* textModule = "velmo-text.so";

}  // namespace

TextRenderer* LazyTextRenderer::get() {
    if (!std::exchange(tried_, true)) {
        if (void* function = moduleFunction(textModule, textRendererFunctionName))
            renderer_.reset(reinterpret_cast<MakeTextRenderer>(function)(locale_.c_str()));
    }
    return renderer_.get();
}

int LazyTextRenderer::width(const std::string& text, const TextAttributes& attributes) {
    auto* renderer = text.empty() ? nullptr : get();
    return renderer ? renderer->width(text, attributes) : 0;
}

void LazyTextRenderer::draw(cairo_t* context, const std::string& text, const TextAttributes& attributes,
                            const Rect& area, const Color& color) {
    if (auto* renderer = text.empty() ? nullptr : get())
        renderer->draw(context, text, attributes, area, color);
}

}  // namespace velmo
