#pragma once

#include "view.h"

#include <QString>

namespace velmo {

/// The first text or the first description of a picture in a view and the views inside of it.
QString describedText(const View& view);

}  // namespace velmo
