#include "QueueView.h"

#include "ApplicationFont.h"
#include "Button.h"
#include "DestinationButton.h"
#include "Divider.h"
#include "DropZone.h"
#include "JobList.h"
#include "JobScrollArea.h"
#include "Label.h"
#include "Symbol.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <cstddef>
#include <utility>

namespace kestrel {

QueueView::QueueView(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QWidget(parent), model_(std::move(model)) {
    setAccessibleName(tr("Conversion Queue"));
    // The tab order is the order of creation.
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(makeHeader());
    column->addWidget(makeMiddle(), 1);
    column->addLayout(makeFooter());
    refresh();
}

QBoxLayout* QueueView::makeHeader() {
    auto* title = new Label(tr("Conversion Queue"), {TextStyle::title2, QFont::Bold}, this);
    title->setObjectName(QStringLiteral("queueTitle"));
    summary_ = new Label({}, {TextStyle::subheadline}, this);
    summary_->setObjectName(QStringLiteral("summary"));
    summary_->setThemeColor(ThemeColor::Name::secondary);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addWidget(title);
    texts->addWidget(summary_);

    //: A button that lets the user add a folder.
    auto* folderButton = new Button(Button::Variant::bordered, tr("Folder"), this);
    folderButton->setObjectName(QStringLiteral("folderButton"));
    folderButton->setSymbol(Symbol::folderBadgePlus);
    connect(folderButton, &QPushButton::clicked, this, [this] { model_->chooseFolder(); });
    auto* addButton = new Button(Button::Variant::prominent, tr("Add Audio"), this);
    addButton->setObjectName(QStringLiteral("addButton"));
    addButton->setSymbol(Symbol::plus);
    connect(addButton, &QPushButton::clicked, this, [this] { model_->chooseFiles(); });

    auto* header = new QHBoxLayout;
    header->setContentsMargins(JobScrollArea::sideMargin, 27, JobScrollArea::sideMargin, 20);
    header->setSpacing(8);
    header->addLayout(texts, 1);
    header->addWidget(folderButton, 0, Qt::AlignVCenter);
    header->addWidget(addButton, 0, Qt::AlignVCenter);
    return header;
}

QWidget* QueueView::makeMiddle() {
    middle_ = new QStackedWidget(this);
    dropZone_ = new DropZone(model_, middle_);
    jobList_ = new JobList(model_, middle_);
    middle_->addWidget(dropZone_);
    middle_->addWidget(jobList_);
    return middle_;
}

QBoxLayout* QueueView::makeFooter() {
    destinationButton_ = new DestinationButton(this);
    destinationButton_->setObjectName(QStringLiteral("destinationButton"));
    connect(destinationButton_, &QPushButton::clicked, this,
            [this] { model_->chooseDestination(); });
    revealButton_ = new Button(Button::Variant::plain, {}, this);
    revealButton_->setObjectName(QStringLiteral("revealButton"));
    revealButton_->setSymbol(Symbol::arrowRightCircle);
    revealButton_->setAccessibleName(tr("Show output folder"));
    revealButton_->setToolTip(tr("Show output folder"));
    connect(revealButton_, &QPushButton::clicked, this, [this] { model_->revealDestination(); });
    startButton_ = new Button(Button::Variant::prominent, {}, this);
    startButton_->setObjectName(QStringLiteral("startButton"));
    startButton_->setSymbol(Symbol::boltFill);
    startButton_->setControlSize(Button::ControlSize::large);
    startButton_->setMinimumLabelWidth(138);
    connect(startButton_, &QPushButton::clicked, this, [this] { model_->start(); });
    cancelButton_ = new Button(Button::Variant::bordered, tr("Cancel"), this);
    cancelButton_->setObjectName(QStringLiteral("cancelButton"));
    cancelButton_->markDestructive();
    connect(cancelButton_, &QPushButton::clicked, this, [this] { model_->cancel(); });

    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    // Keeps the height when the smaller button replaces the larger one.
    auto* strut = new QSpacerItem(0, startButton_->sizeHint().height());
    row->addSpacerItem(strut);
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this, [this, row, strut] {
        strut->changeSize(0, startButton_->sizeHint().height());
        row->invalidate();
    });
    row->addWidget(destinationButton_, 1, Qt::AlignVCenter);
    for (Button* button : {revealButton_, startButton_, cancelButton_}) {
        row->addWidget(button, 0, Qt::AlignVCenter);
    }
    auto* footer = new QVBoxLayout;
    footer->setContentsMargins(JobScrollArea::sideMargin, 0, JobScrollArea::sideMargin, 22);
    footer->setSpacing(14);
    auto* divider = new Divider(Qt::Horizontal, this);
    divider->setObjectName(QStringLiteral("footerDivider"));
    footer->addWidget(divider);
    footer->addLayout(row);
    return footer;
}

QString QueueView::summary() const {
    const std::size_t count = model_->jobs().size();
    if (count == 0) {
        return tr("Add OPUS, OGG, or OGA files");
    }
    const QString files =
        count == 1 ? tr("1 audio file") : tr("%n audio files", nullptr, static_cast<int>(count));
    //: How many of the files are converted.
    const QString completed =
        tr("%n complete", nullptr, static_cast<int>(model_->completedCount()));
    //: "3 audio files" and "2 complete".
    return tr("%1 · %2").arg(files, completed);
}

QString QueueView::startText() const {
    const std::size_t count = model_->jobs().size();
    return count == 1 ? tr("Convert 1 File")
                      : tr("Convert %n Files", nullptr, static_cast<int>(count));
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

    // The two buttons replace each other and hand over the focus.
    const bool hadFocus = startButton_->hasFocus() || cancelButton_->hasFocus();
    const bool isConverting = model_->isConverting();
    startButton_->setText(startText());
    startButton_->setEnabled(!model_->jobs().empty());
    Button* shown = isConverting ? cancelButton_ : startButton_;
    Button* hidden = isConverting ? startButton_ : cancelButton_;
    shown->setVisible(true);
    if (hadFocus) {
        shown->setFocus(Qt::OtherFocusReason);
    }
    hidden->setVisible(false);
}

} // namespace kestrel
