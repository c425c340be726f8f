#pragma once

#include <QBackingStore>
#include <QWidget>

namespace velmo {

/// For a window that is hidden: the toolkit keeps what it showed, here and in the X server, though it draws
/// it anew when it is shown.
inline void releasePicture(const QWidget& window) {
    if (auto* picture = window.backingStore())
        picture->resize({0, 0});
}

}  // namespace velmo
