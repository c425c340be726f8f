#pragma once

#include "view.h"

#include <string>

namespace velmo {

/// The first text or the first description of a picture in a view and the views inside of it.
std::string describedText(const View& view);

}  // namespace velmo
