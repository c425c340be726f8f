#include "confirmation_dialog.h"

#include "linux/qt/windows/await_server.h"

#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace velmo {

ConfirmationDialog::ConfirmationDialog(std::function<void(WindowNumber)> activate)
    : activate_(std::move(activate)) {}

ConfirmationDialog::~ConfirmationDialog() {
    delete box_;
}

void ConfirmationDialog::ask(const Confirmation& confirmation, const std::function<void()>& action) {
    if (!box_) {
        // Without a picture: the question is enough.
        box_ = new QMessageBox(QMessageBox::NoIcon, QStringLiteral("Velmo"),
                               QString::fromStdString(confirmation.question));
        box_->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                             Qt::WindowCloseButtonHint);
        box_->setAttribute(Qt::WA_DeleteOnClose);
        box_->setTextFormat(Qt::PlainText);
        box_->setInformativeText(QString::fromStdString(confirmation.consequence));
        box_->addButton(QMessageBox::Cancel)->setIcon({});
        auto* agree = box_->addButton(QString::fromStdString(confirmation.action), QMessageBox::AcceptRole);
        // Wherever the focus is: a new style moves it.
        agree->setAutoDefault(false);
        box_->setDefaultButton(QMessageBox::Cancel);
        QObject::connect(agree, &QPushButton::clicked, agree, action);
    }
    box_->show();
    box_->raise();
    // The window manager has to know the window before it is asked to bring it to the front.
    awaitServer();
    activate_(static_cast<WindowNumber>(box_->winId()));
}

}  // namespace velmo
