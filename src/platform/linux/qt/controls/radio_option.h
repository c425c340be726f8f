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
    /// Points from the control's top.
    void setMarkTop(qreal top);

protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    qreal markTop_ = 0;
};

}  // namespace velmo
