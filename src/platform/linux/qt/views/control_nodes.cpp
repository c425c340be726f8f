#include "control_nodes.h"

#include "linux/qt/style.h"
#include "linux/qt/views/describe.h"
#include "linux/qt/views/leaf_nodes.h"

#include <QAccessible>
#include <QButtonGroup>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr qreal textFieldWidth = 220;
constexpr qreal optionGap = 8;
constexpr qreal markGap = 8;

void name(QWidget& control, const std::string& title, const ViewContext& context) {
    describe(control, context.accessibilityLabel.empty() ? title : context.accessibilityLabel, context.help);
    control.setEnabled(context.isEnabled);
}

}  // namespace

ToggleNode::ToggleNode(QWidget& surface)
    : RowNode(surface), control_(std::make_unique<SwitchControl>(&surface)) {
    QObject::connect(control_.get(), &QAbstractButton::clicked, control_.get(), [this](bool isOn) {
        // Copies: the handler may end this node.
        const auto onChange = content<Toggle>().onChange;
        const auto reassert = reassert_;
        if (onChange)
            onChange(isOn);
        reassert();
    });
    control_->show();
}

void ToggleNode::apply(const ViewContext& context) {
    const auto& toggle = content<Toggle>();
    showTitle(toggle.title, context);
    name(*control_, toggle.title, context);
    control_->setChecked(toggle.isOn);
    reassert_ = context.reassert;
}

QSizeF ToggleNode::controlSize(qreal /*width*/) const {
    return control_->sizeHint();
}

void ToggleNode::placeControl(const QRectF& area) {
    control_->setGeometry(area.toRect());
}

struct PickerNode::Option {
    explicit Option(QWidget& surface) : mark(&surface), title(&surface), description(&surface) {
        // The texts lie over the mark's control, which is what is pressed.
        title.raise();
        description.raise();
        mark.show();
        title.show();
    }

    QSizeF sizeThatFits(qreal width) const {
        const qreal room = width - RadioOption::markSide - markGap;
        const QSizeF first = title.sizeThatFits(room);
        const QSizeF second = description.isHidden() ? QSizeF(0, 0) : description.sizeThatFits(room);
        return {std::max(first.width(), second.width()) + RadioOption::markSide + markGap,
                std::max(first.height(), qreal(RadioOption::markSide)) + second.height()};
    }

    void place(const QRectF& area) {
        mark.setGeometry(area.toAlignedRect());
        // Beside the middle of the title's first line.
        const qreal line = title.sizeThatFits(unlimited).height();
        mark.setMarkTop(std::max(std::round((line - RadioOption::markSide) / 2), 0.0));
        const bool isMirrored = mark.layoutDirection() == Qt::RightToLeft;
        const qreal room = area.width() - RadioOption::markSide - markGap;
        const qreal left = area.left() + (isMirrored ? 0 : RadioOption::markSide + markGap);
        const QSizeF first(room, title.sizeThatFits(room).height());
        title.setGeometry(QRectF({left, area.top()}, first).toAlignedRect());
        description.setGeometry(
            QRectF(left, area.top() + first.height(), room, area.height() - first.height()).toAlignedRect());
    }

    RadioOption mark;
    TextLabel title;
    TextLabel description;
};

PickerNode::PickerNode(QWidget& surface) : RowNode(surface), group_(std::make_unique<QButtonGroup>()) {
    QObject::connect(group_.get(), &QButtonGroup::idClicked, group_.get(),
                     [this](int index) { choose(static_cast<std::size_t>(index)); });
}

PickerNode::~PickerNode() = default;

void PickerNode::choose(std::size_t index) {
    const auto& picker = content<Picker>();
    if (index >= picker.options.size())
        return;
    // Copies: the handler may end this node.
    const auto onSelect = picker.onSelect;
    const auto tag = picker.options[index].tag;
    const auto reassert = reassert_;
    if (onSelect)
        onSelect(tag);
    reassert();
}

void PickerNode::apply(const ViewContext& context) {
    reassert_ = context.reassert;
    showTitle(content<Picker>().title, context);
    if (content<Picker>().style == PickerStyle::menu) {
        options_.clear();
        applyMenu(context);
    } else {
        menu_.reset();
        applyOptions(context);
    }
}

void PickerNode::applyMenu(const ViewContext& context) {
    const auto& picker = content<Picker>();
    if (!menu_) {
        menu_ = std::make_unique<PopUpButton>(&surface());
        QObject::connect(menu_.get(), &QComboBox::activated, menu_.get(),
                         [this](int index) { choose(static_cast<std::size_t>(index)); });
        menu_->show();
    }
    name(*menu_, picker.title, context);
    menu_->setFont(style::font(context.font));
    QStringList titles;
    for (const auto& option : picker.options)
        titles.append(QString::fromStdString(option.title));
    QStringList shown;
    for (int index = 0; index < menu_->count(); ++index)
        shown.append(menu_->itemText(index));
    const QSignalBlocker silence(menu_.get());
    if (titles != shown) {
        menu_->clear();
        menu_->addItems(titles);
    }
    const auto chosen = std::find_if(picker.options.begin(), picker.options.end(),
                                     [&](const auto& option) { return option.tag == picker.selection; });
    menu_->setCurrentIndex(
        chosen == picker.options.end() ? -1 : static_cast<int>(chosen - picker.options.begin()));
    // The name says what it is chosen for.
    if (menu_->accessibleDescription() != menu_->currentText())
        menu_->setAccessibleDescription(menu_->currentText());
}

void PickerNode::applyOptions(const ViewContext& context) {
    const auto& picker = content<Picker>();
    while (options_.size() < picker.options.size()) {
        options_.push_back(std::make_unique<Option>(surface()));
        group_->addButton(&options_.back()->mark, static_cast<int>(options_.size() - 1));
    }
    options_.resize(picker.options.size());
    ViewContext caption = context;
    caption.font = {.style = TextStyle::caption};
    caption.color = {ColorRole::secondary};
    for (std::size_t index = 0; index < options_.size(); ++index) {
        const auto& option = picker.options[index];
        Option& shown = *options_[index];
        shown.title.display(Text{{{option.title}}}, lookIn(context));
        shown.description.display(Text{{{option.description}}}, lookIn(caption));
        shown.description.setVisible(!option.description.empty());
        name(shown.mark, option.title, context);
        shown.mark.setAccessibleDescription(QString::fromStdString(option.description));
        if (option.tag == picker.selection)
            shown.mark.setChecked(true);
    }
    // The toolkit leads Tab to the first one until the keyboard has once been among them.
    const bool isAnyChosen = group_->checkedButton() != nullptr;
    for (const auto& option : options_)
        option->mark.setFocusPolicy(!isAnyChosen || option->mark.isChecked() ? Qt::StrongFocus
                                                                             : Qt::ClickFocus);
}

QSizeF PickerNode::controlSize(qreal width) const {
    if (menu_)
        return menu_->sizeHint();
    QSizeF size(0, 0);
    for (const auto& option : options_) {
        const QSizeF one = option->sizeThatFits(width);
        size.setWidth(std::max(size.width(), one.width()));
        size.rheight() += one.height() + (size.height() > 0 ? optionGap : 0);
    }
    return size;
}

void PickerNode::placeControl(const QRectF& area) {
    if (menu_) {
        menu_->setGeometry(area.toAlignedRect());
        return;
    }
    qreal y = area.top();
    for (const auto& option : options_) {
        const qreal height = option->sizeThatFits(area.width()).height();
        option->place({area.left(), y, area.width(), height});
        y += height + optionGap;
    }
}

SliderNode::SliderNode(QWidget& surface)
    : ViewNode(surface), control_(std::make_unique<SliderControl>(&surface)) {
    QObject::connect(control_.get(), &QSlider::valueChanged, control_.get(), [this](int position) {
        const auto& slider = content<Slider>();
        const auto onChange = slider.onChange;
        const auto reassert = reassert_;
        const int steps = position - control_->minimum();
        if (onChange)
            onChange(std::min(slider.minimum + steps * slider.step, slider.maximum));
        reassert();
    });
    control_->show();
}

void SliderNode::apply(const ViewContext& context) {
    const auto& slider = content<Slider>();
    reassert_ = context.reassert;
    name(*control_, {}, context);
    const QSignalBlocker silence(control_.get());
    const double step = slider.step > 0 ? slider.step : 1;
    // Where the step is one, assistive programs say the value itself.
    const int first = static_cast<int>(std::lround(slider.minimum / step));
    const int steps = static_cast<int>(std::lround((slider.maximum - slider.minimum) / step));
    control_->setRange(first, first + steps);
    control_->setPageStep(std::max(steps / 6, 1));
    control_->setValue(first + static_cast<int>(std::lround((slider.value - slider.minimum) / step)));
    control_->update();
}

QSizeF SliderNode::contentSize(const QSizeF& offer) const {
    const QSizeF wanted = control_->sizeHint();
    return {std::isfinite(offer.width()) ? std::min(wanted.width(), offer.width()) : wanted.width(),
            wanted.height()};
}

void SliderNode::placeContent(const QRectF& area) {
    // At the trailing end of its room, where controls lie; longer, it would be no easier to set.
    constexpr qreal longest = 220;
    QRectF place = area;
    place.setWidth(std::min(area.width(), longest));
    if (surface().layoutDirection() == Qt::LeftToRight)
        place.moveRight(area.right());
    control_->setGeometry(place.toAlignedRect());
}

TextFieldNode::TextFieldNode(QWidget& surface)
    : RowNode(surface), edit_(std::make_unique<QLineEdit>(&surface)) {
    edit_->setObjectName(QStringLiteral("field"));
    QObject::connect(edit_.get(), &QLineEdit::textEdited, edit_.get(), [this](const QString& text) {
        const auto onEdit = content<TextField>().onEdit;
        const auto reassert = reassert_;
        if (onEdit)
            onEdit(text.toStdString());
        reassert();
    });
    edit_->show();
}

TextFieldNode::~TextFieldNode() = default;

void TextFieldNode::apply(const ViewContext& context) {
    const auto& field = content<TextField>();
    reassert_ = context.reassert;
    // The title keeps the font of its neighbours; what is typed has the field's own.
    ViewContext titleContext = context;
    titleContext.font = {};
    showTitle(field.title, titleContext);
    name(*edit_, field.title, context);
    edit_->setFont(style::font(context.font));
    const QString text = QString::fromStdString(field.text);
    if (edit_->text() == text)
        return;
    const int caret = edit_->cursorPosition();
    edit_->setText(text);
    edit_->setCursorPosition(std::min(caret, static_cast<int>(text.size())));
}

QSizeF TextFieldNode::controlSize(qreal width) const {
    return {std::min(textFieldWidth, width), qreal(edit_->sizeHint().height())};
}

void TextFieldNode::placeControl(const QRectF& area) {
    edit_->setGeometry(area.toAlignedRect());
}

void LabeledContentNode::apply(const ViewContext& context) {
    showTitle(content<LabeledContent>().title, context);
    ViewContext inner = context.forChildren(Axis::horizontal);
    inner.color = {ColorRole::secondary};
    children_.update(view().children, inner, surface());
}

QSizeF LabeledContentNode::controlSize(qreal width) const {
    return children_.empty() ? QSizeF(0, 0) : children_[0].sizeThatFits({width, unlimited});
}

void LabeledContentNode::placeControl(const QRectF& area) {
    if (!children_.empty())
        children_[0].place(area);
}

LabelNode::LabelNode(QWidget& surface) : ViewNode(surface), image_(std::make_unique<ImageLabel>(&surface)) {
    image_->setProperty("accessibleRole", QAccessible::Graphic);
    image_->show();
}

void LabelNode::apply(const ViewContext& context) {
    constexpr double symbolFactor = 1.25;
    ViewContext symbol = context;
    symbol.font.size = symbol.font.size.value_or(
        std::round(QFontInfo(style::font(context.font)).pixelSize() * symbolFactor));
    image_->display(imageIn(content<Label>().image, symbol), style::color({ColorRole::accent}), false);
    image_->setAccessibleName(QString::fromStdString(content<Label>().image.accessibilityDescription));
    children_.update(view().children, context.forChildren(Axis::horizontal), surface());
}

qreal LabelNode::textLeft() const {
    return std::ceil(image_->naturalSize().width()) + optionGap;
}

QSizeF LabelNode::contentSize(const QSizeF& offer) const {
    const QSizeF text =
        children_.empty() ? QSizeF(0, 0) : children_[0].sizeThatFits({offer.width() - textLeft(), unlimited});
    return {textLeft() + text.width(), std::max(text.height(), image_->naturalSize().height())};
}

void LabelNode::placeContent(const QRectF& area) {
    const bool isMirrored = surface().layoutDirection() == Qt::RightToLeft;
    const QSizeF symbol = image_->naturalSize();
    const qreal symbolLeft = isMirrored ? area.right() - symbol.width() : area.left();
    image_->place({{symbolLeft, area.top() + (area.height() - symbol.height()) / 2}, symbol});
    if (children_.empty())
        return;
    const qreal width = area.width() - textLeft();
    const QSizeF text = children_[0].sizeThatFits({width, unlimited});
    const qreal left = isMirrored ? area.left() + width - text.width() : area.left() + textLeft();
    children_[0].place({{left, area.top() + (area.height() - text.height()) / 2}, text});
}

}  // namespace velmo
