#pragma once

#include "view_modifier.h"

#include <QWidget>

namespace velmo {

/// A filled shape behind a view; its maker puts it there.
class BackgroundWidget : public QWidget {
public:
    explicit BackgroundWidget(QWidget& surface);

    void display(const Background& background);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Background background_;
};

}  // namespace velmo
