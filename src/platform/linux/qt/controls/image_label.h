#pragma once

#include "image.h"

#include <QColor>
#include <QRectF>
#include <QWidget>

namespace velmo {

/// A picture or symbol, sharp at every scale.
class ImageLabel : public QWidget {
public:
    explicit ImageLabel(QWidget* parent);

    /// Symbols and templates take the colour.
    void display(const Image& image, const QColor& color, bool isResizable);
    /// The picture's own extent.
    QSizeF naturalSize() const;
    /// In the parent; a widget's geometry has whole units only, which are more than a pixel.
    void place(const QRectF& area);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Image image_;
    QColor color_;
    bool isResizable_ = false;
    /// In the widget.
    QRectF area_;
};

}  // namespace velmo
