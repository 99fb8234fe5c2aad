#include "JobRow.h"

#include "ApplicationFont.h"
#include "Badge.h"
#include "Button.h"
#include "DisplayText.h"
#include "ElidedLabel.h"
#include "FileURL.h"
#include "FocusRing.h"
#include "JobState.h"
#include "KeyboardFocus.h"
#include "Label.h"
#include "ProgressBar.h"
#include "Symbol.h"
#include "SymbolBadge.h"
#include "SymbolView.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace kestrel {
namespace {

constexpr int badgeSide = 42;
constexpr int rowSpacing = 14;
constexpr TextFont checkMarkFont{TextStyle::title3};
/// The margin around the circle of a symbol, as a fraction of the symbol's size.
constexpr double circleMargin = 2.0 / 24;

void drawJobBadge(QPainter& painter, const QRect& rect, const QPalette& palette) {
    constexpr double radius = 9;
    constexpr double fillOpacity = 0.11;
    const ThemeColor purple = ThemeColor::Name::purple;
    drawSymbolBadge(painter, rect, radius, purple.withOpacity(fillOpacity).color(palette),
                    Symbol::waveform, TextFont{}.font(), purple.color(palette));
}

void setAccessibleNameIfChanged(QWidget& widget, const QString& name) {
    if (widget.accessibleName() != name) {
        widget.setAccessibleName(name);
    }
}

void setAccessibleDescriptionIfChanged(QWidget& widget, const QString& description) {
    if (widget.accessibleDescription() != description) {
        widget.setAccessibleDescription(description);
    }
}

} // namespace

JobRow::JobRow(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QWidget(parent), model_(std::move(model)) {
    setFocusPolicy(Qt::ClickFocus);
    auto* row = new QHBoxLayout(this);
    row->setSpacing(rowSpacing);
    leadingSpace_ = new QSpacerItem(0, 0);
    row->addSpacerItem(leadingSpace_);
    auto* badge = new Badge(badgeSide, drawJobBadge, this);
    badge->setObjectName(QStringLiteral("badge"));
    row->addWidget(badge, 0, Qt::AlignVCenter);
    row->addLayout(makeTexts(), 1);
    // A flexible space of its own in the stack: the texts end twice the spacing before a button,
    // and once before the end of a row without one.
    trailingSpace_ = new QSpacerItem(0, 0);
    row->addSpacerItem(trailingSpace_);

    checkMark_ =
        new SymbolView(Symbol::checkmarkCircleFill, checkMarkFont, ThemeColor::Name::green, this);
    checkMark_->setObjectName(QStringLiteral("checkMark"));
    checkMark_->setAccessibleName(QStringLiteral("Complete"));
    row->addWidget(checkMark_, 0, Qt::AlignVCenter);

    removeButton_ = new Button(Button::Variant::plain, {}, this);
    removeButton_->setObjectName(QStringLiteral("removeButton"));
    // Not a tab stop: arrow keys move into it from the row.
    removeButton_->setFocusPolicy(Qt::ClickFocus);
    removeButton_->setSymbol(Symbol::xmarkCircleFill);
    removeButton_->setThemeColor(ThemeColor(ThemeColor::Name::secondarySymbol).withOpacity(0.7));
    connect(removeButton_, &QPushButton::clicked, this, [this] { model_->remove(job()); });
    row->addWidget(removeButton_, 0, Qt::AlignVCenter);
    alignTrailing();
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this, &JobRow::alignTrailing);
}

void JobRow::alignTrailing() {
    // The circles of check marks and crosses end where the contents end, and with them the progress
    // bar above the list: the button's padding and the symbols' margins stick out.
    const double crossMargin = circleMargin * symbolSize(removeButton_->font());
    const double checkMargin = circleMargin * symbolSize(checkMarkFont.font());
    const double cross = removeButton_->padding() + crossMargin;
    const int excess = std::min(static_cast<int>(std::lround(cross)), overhang);
    checkMark_->setTrailingInset(static_cast<int>(std::lround(cross - checkMargin)));
    leadingSpace_->changeSize(excess, 0, QSizePolicy::Fixed);
    trailingSpace_->changeSize(rowSpacing + excess, 0, QSizePolicy::Fixed);
    layout()->setContentsMargins(overhang - excess, 7, overhang - excess, 7);
    layout()->invalidate();
}

QBoxLayout* JobRow::makeTexts() {
    name_ = new ElidedLabel(Qt::ElideRight, {TextStyle::body, QFont::Medium}, this);
    name_->setObjectName(QStringLiteral("name"));
    folder_ = new ElidedLabel(Qt::ElideRight, {TextStyle::caption}, this);
    folder_->setObjectName(QStringLiteral("folder"));
    folder_->setThemeColor(ThemeColor::Name::secondary);
    //: Stands between a folder's name and a file's state.
    auto* bullet = new Label(tr("•"), {TextStyle::caption}, this);
    bullet->setObjectName(QStringLiteral("bullet"));
    bullet->setThemeColor(ThemeColor::Name::secondary);
    state_ = new Label({}, {TextStyle::caption}, this);
    state_->setObjectName(QStringLiteral("state"));
    state_->setWordWrap(false);
    progress_ = new ProgressBar(this);
    progress_->setObjectName(QStringLiteral("progress"));
    message_ = new ElidedLabel(maxMessageLines, {TextStyle::caption2}, this);
    message_->setThemeColor(ThemeColor::Name::red);
    message_->setObjectName(QStringLiteral("message"));

    auto* status = new QHBoxLayout;
    status->setSpacing(8);
    status->addWidget(folder_);
    status->addWidget(bullet);
    status->addWidget(state_);
    status->addStretch(1);

    auto* column = new QVBoxLayout;
    column->setSpacing(6);
    // Keeps the texts together beside a taller badge.
    column->addStretch(1);
    column->addWidget(name_);
    column->addLayout(status);
    column->addWidget(progress_);
    column->addWidget(message_);
    column->addStretch(1);
    return column;
}

void JobRow::setJob(const ConversionJob& job) {
    if (job_ == job) {
        return;
    }
    const bool isNewSource = !job_ || job_->source() != job.source();
    const bool isNewState = !job_ || job_->state != job.state;
    if (job_ && job_->id() != job.id()) {
        // A press that began for one job must not end in the removal of another.
        removeButton_->discardPress();
    }
    job_ = job;
    if (isNewSource) {
        showSource();
    }
    if (isNewState) {
        showState();
    }
    if (isNewSource || isNewState) {
        updateAccessibleNames();
    }
    progress_->setFraction(job.progress);
}

void JobRow::showSource() {
    const FileURL folder = job().source().deletingLastPathComponent();
    name_->setText(displayText(job().source().lastPathComponent()));
    folder_->setText(displayText(folder.lastPathComponent()));
}

void JobRow::showState() {
    const JobState& state = job().state;
    state_->setText(stateText());
    state_->setThemeColor(stateColor());
    message_->setText(displayMessage(state.message()));
    const bool isConverting = state.is(JobState::Case::converting);
    const bool isCompleted = state.is(JobState::Case::completed);
    const bool isRemovable = !isCompleted && !isConverting;
    if (!isRemovable && window()->focusWidget() == removeButton_) {
        // Hiding the button would pass the focus to the next tab stop.
        setFocus(Qt::OtherFocusReason);
    }
    const std::array<std::pair<QWidget*, bool>, 4> parts{{
        {progress_, isConverting},
        {message_, state.is(JobState::Case::failed)},
        {checkMark_, isCompleted},
        {removeButton_, isRemovable},
    }};
    // Showing a widget lays out the row at once: those to be hidden must be hidden by then.
    for (const bool isShown : {false, true}) {
        for (const auto& [part, isPart] : parts) {
            if (isPart == isShown) {
                part->setVisible(isShown);
            }
        }
    }
}

void JobRow::discardPostedUpdates() {
    QCoreApplication::removePostedEvents(this, QEvent::UpdateLater);
    for (QWidget* part : findChildren<QWidget*>()) {
        QCoreApplication::removePostedEvents(part, QEvent::UpdateLater);
    }
}

void JobRow::setPosition(std::size_t index, std::size_t count) {
    const std::pair shown(index, count);
    if (position_ == shown) {
        return;
    }
    position_ = shown;
    //: A row's place among all: "3 of 120".
    const QString position = tr("%1 of %2").arg(QString::number(index + 1), QString::number(count));
    setAccessibleDescriptionIfChanged(*this, position);
    setAccessibleDescriptionIfChanged(*removeButton_, position);
}

QString JobRow::stateText() const {
    // Verbatim, in every language.
    switch (job().state.which()) {
    case JobState::Case::waiting:
        return QStringLiteral("Ready");
    case JobState::Case::converting:
        return QStringLiteral("Converting");
    case JobState::Case::completed:
        return QStringLiteral("Complete");
    case JobState::Case::cancelled:
        return QStringLiteral("Cancelled");
    case JobState::Case::failed:
        break;
    }
    return QStringLiteral("Failed");
}

ThemeColor JobRow::stateColor() const {
    switch (job().state.which()) {
    case JobState::Case::converting:
        return ThemeColor::Name::purple;
    case JobState::Case::completed:
        return ThemeColor::Name::green;
    case JobState::Case::failed:
        return ThemeColor::Name::red;
    default:
        return ThemeColor::Name::secondary;
    }
}

void JobRow::updateAccessibleNames() {
    const QString name = isolated(name_->text());
    const QString folder = isolated(folder_->text());
    const QString message = isolated(message_->text().simplified());
    //: A file's name, its folder, and its state: "track.opus, in Album, Ready".
    const QString text = tr("%1, in %2, %3");
    //: The same with why it failed: "track.opus, in Album, Failed, Not an audio file".
    const QString failure = tr("%1, in %2, %3, %4");
    setAccessibleNameIfChanged(*this, message.isEmpty()
                                          ? text.arg(name, folder, stateText())
                                          : failure.arg(name, folder, stateText(), message));
    setAccessibleNameIfChanged(*removeButton_, tr("Remove %1").arg(name));
    //: How far the conversion of a file is.
    setAccessibleNameIfChanged(*progress_, tr("Progress of %1").arg(name));
}

bool JobRow::isRemovable() const {
    return !removeButton_->isHidden();
}

Button* JobRow::removeButton() const {
    return removeButton_;
}

void JobRow::paintEvent(QPaintEvent*) {
    if (KeyboardFocus::isShownOn(*this)) {
        constexpr double cornerRadius = 9;
        QPainter painter(this);
        drawFocusRing(painter, rect(), cornerRadius,
                      ThemeColor(ThemeColor::Name::purple).color(palette()));
    }
}

JobRowMetrics JobRow::measure(const std::shared_ptr<ConverterViewModel>& model, QWidget* parent,
                              int width) {
    JobRow row(model, parent);
    ConversionJob job{FileURL("/folder/name")};
    const auto heightIn = [&row, &job](const JobState& state) {
        job.state = state;
        row.setJob(job);
        row.layout()->activate();
        return row.sizeHint().height();
    };
    // One height for all of them: the rows below stay in place when a conversion starts or ends.
    const int plainHeight =
        std::max({heightIn(JobState::waiting()), heightIn(JobState::completed()),
                  heightIn(JobState::converting())});
    const int failedHeight = heightIn(JobState::failed("message"));
    row.layout()->setGeometry(QRect(0, 0, width, failedHeight));
    const QFont messageFont = row.message_->font();
    return {.width = width,
            .plainHeight = plainHeight,
            .failedHeight = failedHeight,
            .messageLineHeight = lineHeight(messageFont),
            .messageWidth = row.message_->width(),
            .messageFont = messageFont};
}

} // namespace kestrel
