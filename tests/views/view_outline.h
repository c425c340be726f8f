#pragma once

#include "platform/view.h"

#include <string>
#include <string_view>

namespace velmo {

/// All of a described view as text: a line for each view, indented below the one around it, with its
/// modifiers in their order. Handlers and the pixels of pictures are left out.
std::string outlineOf(const View& root);

/// Fails the test where the outline is not that of tests/views/outlines/NAME.txt. With VELMO_KEEP_OUTLINES in
/// the environment it is written there, for whoever changes a look to read what has become of it.
void expectOutline(const View& root, std::string_view name);

}  // namespace velmo
