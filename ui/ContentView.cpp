#include "ContentView.h"

#include "AccessibleViews.h"
#include "Alert.h"
#include "BatchAnnouncer.h"
#include "Compositing.h"
#include "DisplayText.h"
#include "Divider.h"
#include "QueueView.h"
#include "SettingsSidebar.h"

#include <QHBoxLayout>
#include <QMetaObject>

#include <optional>
#include <string>
#include <utility>

namespace kestrel {

ContentView::ContentView(std::shared_ptr<ConverterViewModel> model,
                         std::function<std::optional<FileURL>()> locateBinary, QWidget* parent)
    : QWidget(parent), model_(std::move(model)) {
    // Must precede the first view.
    installAccessibleViews();
    sidebar_ = new SettingsSidebar(model_, std::move(locateBinary), this);
    queue_ = new QueueView(model_, this);
    announcer_ = new BatchAnnouncer(model_, this);
    auto* divider = new Divider(Qt::Vertical, this);
    divider->setObjectName(QStringLiteral("sidebarDivider"));
    divider->setOpacity(0.55);
    belowInset_ = new QHBoxLayout;
    belowInset_->addWidget(queue_, 1);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(sidebar_);
    row->addWidget(divider);
    row->addLayout(belowInset_, 1);
    connect(model_.get(), &ConverterViewModel::willChange, this, &ContentView::scheduleRefresh);
    if (model_->alertMessage()) {
        scheduleRefresh();
    }
}

void ContentView::setTopInset(int height) {
    sidebar_->setTopInset(height);
    belowInset_->setContentsMargins(0, height, 0, 0);
}

void ContentView::scheduleRefresh() {
    if (isRefreshScheduled_) {
        return;
    }
    // `willChange` is emitted before the write; the queued refresh runs after it.
    isRefreshScheduled_ = true;
    QMetaObject::invokeMethod(this, &ContentView::refresh, Qt::QueuedConnection);
}

void ContentView::refresh() {
    isRefreshScheduled_ = false;
    sidebar_->refresh();
    queue_->refresh();
    announcer_->refresh();
    refreshAlert();
}

void ContentView::refreshAlert() {
    const std::optional<std::string>& message = model_->alertMessage();
    if (message) {
        showAlert(displayMessage(*message));
    } else if (alert_) {
        alert_->disconnect(this);
        alert_->close();
        alert_.clear();
    }
}

void ContentView::showAlert(const QString& message) {
    if (alert_) {
        alert_->setMessage(message);
        return;
    }
    alert_ = new Alert(this);
    alert_->setMessage(message);
    alert_->setAttribute(Qt::WA_DeleteOnClose);
    alert_->setAttribute(Qt::WA_TranslucentBackground, isCompositing());
    connect(alert_, &QDialog::finished, this, [this] {
        alert_.clear();
        model_->setAlertMessage(std::nullopt);
        // Queued, to run after the close. A window manager that learns of the alert only after its
        // dismissal does not restore the focus; Qt 6.4 to 6.11 then have no active window.
        QMetaObject::invokeMethod(this, &QWidget::activateWindow, Qt::QueuedConnection);
    });
    alert_->show();
}

} // namespace kestrel
