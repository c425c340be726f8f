#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

class QScreen;

namespace velmo {

/// Tells when the toolkit has taken notice of screens that have come, gone, or changed in size or scale: it
/// learns of that by itself, sooner or later than the bar.
class ScreenChanges : public QObject {
public:
    /// Called once for all that changes at a time.
    explicit ScreenChanges(const std::function<void()>& changed);

private:
    void watch(QScreen* screen) const;
    void noteChange() { report_.start(); }

    QTimer report_;
};

}  // namespace velmo
