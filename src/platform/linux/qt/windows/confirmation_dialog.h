#pragma once

#include "event.h"
#include "linux/toolkit/confirmation.h"

#include <QPointer>

#include <functional>

class QMessageBox;

namespace velmo {

/// Asks one question at a time.
class ConfirmationDialog {
public:
    /// `activate` makes a window the one that the user works with.
    explicit ConfirmationDialog(std::function<void(WindowNumber)> activate);
    ~ConfirmationDialog();
    ConfirmationDialog(const ConfirmationDialog&) = delete;
    ConfirmationDialog& operator=(const ConfirmationDialog&) = delete;

    void ask(const Confirmation& confirmation, const std::function<void()>& action);

private:
    std::function<void(WindowNumber)> activate_;
    QPointer<QMessageBox> box_;
};

}  // namespace velmo
