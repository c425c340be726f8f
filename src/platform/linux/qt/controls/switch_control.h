#pragma once

#include <QCheckBox>

namespace velmo {

/// A switch for on and off.
class SwitchControl : public QCheckBox {
public:
    explicit SwitchControl(QWidget* parent);

    QSize sizeHint() const override;

protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace velmo
