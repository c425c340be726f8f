#pragma once

#include "linux/qt/controls/image_label.h"
#include "linux/qt/controls/pop_up_button.h"
#include "linux/qt/controls/radio_option.h"
#include "linux/qt/controls/slider_control.h"
#include "linux/qt/controls/switch_control.h"
#include "linux/qt/views/row_node.h"

class QButtonGroup;
class QLineEdit;

namespace velmo {

class ToggleNode : public RowNode {
public:
    explicit ToggleNode(QWidget& surface);

protected:
    void apply(const ViewContext& context) override;
    QSizeF controlSize(qreal width) const override;
    void placeControl(const QRectF& area) override;

private:
    std::unique_ptr<SwitchControl> control_;
    std::function<void()> reassert_;
};

/// Either a button that shows the choice or a group of options.
class PickerNode : public RowNode {
public:
    explicit PickerNode(QWidget& surface);
    ~PickerNode() override;

protected:
    void apply(const ViewContext& context) override;
    QSizeF controlSize(qreal width) const override;
    void placeControl(const QRectF& area) override;

private:
    struct Option;

    void applyMenu(const ViewContext& context);
    void applyOptions(const ViewContext& context);
    void choose(std::size_t index);

    std::unique_ptr<PopUpButton> menu_;
    std::vector<std::unique_ptr<Option>> options_;
    std::unique_ptr<QButtonGroup> group_;
    std::function<void()> reassert_;
};

class SliderNode : public ViewNode {
public:
    explicit SliderNode(QWidget& surface);

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentExpands(Qt::Orientation direction) const override { return direction == Qt::Horizontal; }

private:
    std::unique_ptr<SliderControl> control_;
    std::function<void()> reassert_;
};

class TextFieldNode : public RowNode {
public:
    explicit TextFieldNode(QWidget& surface);
    ~TextFieldNode() override;

protected:
    void apply(const ViewContext& context) override;
    QSizeF controlSize(qreal width) const override;
    void placeControl(const QRectF& area) override;
    bool controlExpands() const override { return true; }

private:
    std::unique_ptr<QLineEdit> edit_;
    std::function<void()> reassert_;
};

class LabeledContentNode : public RowNode {
public:
    using RowNode::RowNode;

protected:
    void apply(const ViewContext& context) override;
    QSizeF controlSize(qreal width) const override;
    void placeControl(const QRectF& area) override;

private:
    ViewNodes children_;
};

/// A symbol before a text.
class LabelNode : public ViewNode {
public:
    explicit LabelNode(QWidget& surface);

protected:
    void apply(const ViewContext& context) override;
    QSizeF contentSize(const QSizeF& offer) const override;
    void placeContent(const QRectF& area) override;
    bool contentCanShrink() const override { return true; }

private:
    qreal textLeft() const;

    std::unique_ptr<ImageLabel> image_;
    ViewNodes children_;
};

}  // namespace velmo
