#pragma once

#include <pango/pango.h>

#include <memory>

namespace velmo {

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};

template <typename Type>
using ObjectPointer = std::unique_ptr<Type, Unreference>;

struct FreeDescription {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};

using FontDescriptionPointer = std::unique_ptr<PangoFontDescription, FreeDescription>;

struct FreeText {
    void operator()(gchar* text) const { g_free(text); }
};

using TextPointer = std::unique_ptr<gchar, FreeText>;

}  // namespace velmo
