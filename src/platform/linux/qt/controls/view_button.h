#pragma once

#include "view_content.h"

#include <QAbstractButton>

namespace velmo {

/// A button whose label is a view of its own, made on it.
class ViewButton : public QAbstractButton {
public:
    explicit ViewButton(QWidget& surface);

    void setStyle(ButtonStyle style);
    ButtonStyle buttonStyle() const { return style_; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    ButtonStyle style_ = ButtonStyle::automatic;
};

}  // namespace velmo
