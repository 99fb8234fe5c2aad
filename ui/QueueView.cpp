#include "QueueView.h"

#include "DestinationButton.h"
#include "DropZone.h"
#include "JobList.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace kestrel {

QueueView::QueueView(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QWidget(parent),
      model_(std::move(model)),
      middle_(new QStackedWidget(this)),
      dropZone_(new DropZone(model_, middle_)),
      jobList_(new JobList(model_, middle_)) {
    middle_->addWidget(dropZone_);
    middle_->addWidget(jobList_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(makeHeader());
    column->addWidget(middle_, 1);
    column->addLayout(makeFooter());
    refresh();
}

QBoxLayout* QueueView::makeHeader() {
    auto* title = new QLabel(tr("Conversion Queue"), this);
    summary_ = new QLabel(this);
    summary_->setObjectName(QStringLiteral("summary"));
    summary_->setTextFormat(Qt::PlainText);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addWidget(title);
    texts->addWidget(summary_);

    auto* folderButton = new QPushButton(tr("Folder"), this);
    folderButton->setObjectName(QStringLiteral("folderButton"));
    connect(folderButton, &QPushButton::clicked, this, [this] { model_->chooseFolder(); });
    auto* addButton = new QPushButton(tr("Add Audio"), this);
    addButton->setObjectName(QStringLiteral("addButton"));
    connect(addButton, &QPushButton::clicked, this, [this] { model_->chooseFiles(); });

    auto* header = new QHBoxLayout;
    header->setContentsMargins(26, 27, 26, 20);
    header->setSpacing(8);
    header->addLayout(texts);
    header->addStretch(1);
    header->addWidget(folderButton);
    header->addWidget(addButton);
    return header;
}

QBoxLayout* QueueView::makeFooter() {
    auto* divider = new QFrame(this);
    divider->setFrameShape(QFrame::HLine);

    destinationButton_ = new DestinationButton(this);
    destinationButton_->setObjectName(QStringLiteral("destinationButton"));
    connect(destinationButton_, &QPushButton::clicked, this,
            [this] { model_->chooseDestination(); });
    revealButton_ = new QToolButton(this);
    revealButton_->setObjectName(QStringLiteral("revealButton"));
    revealButton_->setText(QStringLiteral("→"));
    revealButton_->setAccessibleName(tr("Show output folder"));
    revealButton_->setAutoRaise(true);
    connect(revealButton_, &QToolButton::clicked, this, [this] { model_->revealDestination(); });
    startButton_ = new QPushButton(this);
    startButton_->setObjectName(QStringLiteral("startButton"));
    startButton_->setMinimumWidth(138);
    connect(startButton_, &QPushButton::clicked, this, [this] { model_->start(); });
    cancelButton_ = new QPushButton(tr("Cancel"), this);
    cancelButton_->setObjectName(QStringLiteral("cancelButton"));
    connect(cancelButton_, &QPushButton::clicked, this, [this] { model_->cancel(); });

    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(destinationButton_, 1);
    row->addWidget(revealButton_);
    row->addWidget(startButton_);
    row->addWidget(cancelButton_);
    auto* footer = new QVBoxLayout;
    footer->setContentsMargins(26, 0, 26, 22);
    footer->setSpacing(14);
    footer->addWidget(divider);
    footer->addLayout(row);
    return footer;
}

QString QueueView::summary() const {
    const std::size_t count = model_->jobs().size();
    if (count == 0) {
        return tr("Add OPUS, OGG, or OGA files");
    }
    const QString text =
        count == 1 ? tr("%1 audio file · %2 complete") : tr("%1 audio files · %2 complete");
    return text.arg(QString::number(count), QString::number(model_->completedCount()));
}

QString QueueView::startText() const {
    const std::size_t count = model_->jobs().size();
    const QString text = count == 1 ? tr("Convert %1 File") : tr("Convert %1 Files");
    return text.arg(QString::number(count));
}

void QueueView::refresh() {
    summary_->setText(summary());
    refreshMiddle();
    refreshFooter();
}

void QueueView::refreshMiddle() {
    QWidget* wanted = model_->jobs().empty() ? static_cast<QWidget*>(dropZone_) : jobList_;
    const QWidget* focus = window()->focusWidget();
    const bool hadFocus =
        middle_->currentWidget() != wanted && focus != nullptr && middle_->isAncestorOf(focus);
    middle_->setCurrentWidget(wanted);
    dropZone_->refresh();
    jobList_->refresh();
    if (hadFocus) {
        wanted->setFocus(Qt::OtherFocusReason);
    }
}

void QueueView::refreshFooter() {
    destinationButton_->setDestination(model_->destination());
    revealButton_->setVisible(model_->destination().has_value());

    // One of the two buttons stands in the other's place, and takes the focus along with it.
    const bool hadFocus = startButton_->hasFocus() || cancelButton_->hasFocus();
    const bool isConverting = model_->isConverting();
    startButton_->setText(startText());
    startButton_->setEnabled(!model_->jobs().empty());
    QPushButton* shown = isConverting ? cancelButton_ : startButton_;
    QPushButton* hidden = isConverting ? startButton_ : cancelButton_;
    shown->setVisible(true);
    if (hadFocus) {
        shown->setFocus(Qt::OtherFocusReason);
    }
    hidden->setVisible(false);
}

} // namespace kestrel
