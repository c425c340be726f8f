#pragma once

#include <QComboBox>

namespace velmo {

/// Shows one choice, and the others in a list once it is pressed.
class PopUpButton : public QComboBox {
public:
    explicit PopUpButton(QWidget* parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Not by an accidental turn of the wheel: the form around it scrolls.
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace velmo
