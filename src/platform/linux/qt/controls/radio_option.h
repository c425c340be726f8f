#pragma once

#include <QRadioButton>

namespace velmo {

/// The mark of one option of a radio group. Its title stands beside it as a text of its own.
class RadioOption : public QRadioButton {
public:
    explicit RadioOption(QWidget* parent);

    QSize sizeHint() const override;
    /// How far the mark reaches; all of the control can be clicked.
    static constexpr int markSide = 16;

protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace velmo
