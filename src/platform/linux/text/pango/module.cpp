#include "linux/text/pango/pango_text_renderer.h"

extern "C" __attribute__((visibility("default"))) velmo::TextRenderer* velmoMakeTextRenderer(
    const char* locale) {
    return new velmo::PangoTextRenderer(locale);
}
