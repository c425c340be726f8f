#pragma once

#include <QAbstractNativeEventFilter>

namespace velmo {

/// Any program of the display can destroy a window of ours, of which the toolkit takes no notice. Such a
/// window is closed, and made anew for when it is shown again.
class DestroyedWindows : public QAbstractNativeEventFilter {
public:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
};

}  // namespace velmo
