#pragma once

#include "linux/event_loop/hosted_loop.h"
#include "linux/qt/views/view_node.h"

#include <QWidget>

namespace velmo {

/// Shows a described view with native widgets. A new description changes only what differs.
class ViewHost : public QWidget {
public:
    /// The loop that runs what the content's handlers post.
    explicit ViewHost(HostedLoop& loop, QWidget* parent = nullptr);
    ~ViewHost() override;

    void setContent(const View& content);
    /// Points that the content wants.
    QSizeF fittingSize() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void apply();
    /// The control before the one that has the keyboard. Null where none of ours has it.
    QWidget* beforeKeyboard() const;
    void layOut();
    void chainFocus();

    HostedLoop& loop_;
    View content_;
    ViewNodes root_;
    bool isStale_ = false;
};

}  // namespace velmo
