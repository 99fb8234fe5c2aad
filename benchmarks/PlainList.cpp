#include "PlainList.h"

#include "ControlStyle.h"
#include "ConversionJob.h"
#include "DisplayText.h"
#include "ElidedLabel.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "JobState.h"
#include "Symbol.h"
#include "SymbolBadge.h"
#include "TextDrawing.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QAbstractListModel>
#include <QFontMetrics>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionProgressBar>
#include <QStyledItemDelegate>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kestrel::bench {
namespace {

constexpr int badgeSide = 42;
constexpr int lineSpacing = 6;
constexpr int partSpacing = 8;
constexpr int barHeight = 6;

class JobsModel : public QAbstractListModel {
  public:
    JobsModel(std::shared_ptr<ConverterViewModel> model, QObject* parent)
        : QAbstractListModel(parent), model_(std::move(model)) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(model_->jobs().size());
    }

    /// The delegate reads the jobs themselves.
    QVariant data(const QModelIndex&, int) const override { return {}; }

    const ConversionJob& job(const QModelIndex& index) const {
        return model_->jobs()[static_cast<std::size_t>(index.row())];
    }

  private:
    std::shared_ptr<ConverterViewModel> model_;
};

class RowDelegate : public QStyledItemDelegate {
  public:
    RowDelegate(const JobsModel& jobs, const JobRowHeights& heights, QObject* parent)
        : QStyledItemDelegate(parent), jobs_(jobs), heights_(heights) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
        return {1, heights_.offsets().height(static_cast<std::size_t>(index.row()))};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const ConversionJob& job = jobs_.job(index);
        const QRect row = option.rect.adjusted(
            JobScrollArea::sideMargin, 0,
            option.widget->width() - JobScrollArea::sideMargin - option.rect.right() - 1, 0);
        painter->save();
        drawBadge(*painter, row, option.palette);
        drawTexts(*painter, row, job, option);
        drawTrailing(*painter, row, job, option.palette);
        painter->restore();
        constexpr double separatorStrength = 0.5;
        QColor separator = separatorColor(option.palette);
        separator.setAlphaF(static_cast<float>(separator.alphaF() * separatorStrength));
        painter->fillRect(row.left() + JobRow::textIndent, row.bottom(),
                          row.width() - JobRow::textIndent, 1, separator);
    }

  private:
    static void drawBadge(QPainter& painter, const QRect& row, const QPalette& palette) {
        constexpr double radius = 9;
        constexpr double fillOpacity = 0.11;
        const ThemeColor purple = ThemeColor::Name::purple;
        const QRect box(row.left(), row.top() + (row.height() - badgeSide) / 2, badgeSide,
                        badgeSide);
        drawSymbolBadge(painter, box, radius, purple.withOpacity(fillOpacity).color(palette),
                        Symbol::waveform, TextFont{}.font(), purple.color(palette));
    }

    void drawTexts(QPainter& painter, const QRect& row, const ConversionJob& job,
                   const QStyleOptionViewItem& option) const {
        const bool isConverting = job.state.is(JobState::Case::converting);
        const bool isFailed = job.state.is(JobState::Case::failed);
        int height = lineHeight(nameFont_) + lineSpacing + lineHeight(captionFont_);
        height += isConverting ? lineSpacing + barHeight : 0;
        height += isFailed ? lineSpacing + lineHeight(messageFont_) : 0;
        QRect line = row.adjusted(JobRow::textIndent, 0, -partSpacing * 5, 0);
        line.setTop(row.top() + (row.height() - height) / 2);

        const ThemeColor primary = ThemeColor::Name::primary;
        const ThemeColor secondary = ThemeColor::Name::secondary;
        const FileURL folder = job.source().deletingLastPathComponent();
        line.setHeight(lineHeight(nameFont_));
        drawElided(painter, line, nameFont_, primary.color(option.palette),
                   kestrel::displayText(job.source().lastPathComponent()));
        line.translate(0, line.height() + lineSpacing);
        line.setHeight(lineHeight(captionFont_));
        QRect part = line;
        for (const auto& [text, color] :
             {std::pair(kestrel::displayText(folder.lastPathComponent()), secondary),
              std::pair(QStringLiteral("•"), secondary),
              std::pair(stateText(job.state), stateColor(job.state))}) {
            part.setLeft(
                part.left() + partSpacing +
                drawElided(painter, part, captionFont_, color.color(option.palette), text));
        }
        line.translate(0, line.height() + lineSpacing);
        if (isConverting) {
            drawProgress(painter, line, job.progress, option);
        } else if (isFailed) {
            painter.setFont(messageFont_);
            painter.setPen(ThemeColor(ThemeColor::Name::red).color(option.palette));
            for (const QString& text :
                 ElidedLabel::shownLines(displayMessage(job.state.message()), messageFont_,
                                         line.width(), JobRow::maxMessageLines)) {
                drawAligned(painter, line, option.direction, Qt::AlignLeft | Qt::AlignVCenter,
                            text);
                line.translate(0, line.height());
            }
        }
    }

    /// Returns the width of the text.
    static int drawElided(QPainter& painter, const QRect& box, const QFont& font,
                          const QColor& color, const QString& text) {
        const QFontMetrics metrics(font);
        painter.setFont(font);
        painter.setPen(color);
        drawAligned(painter, box, Qt::LeftToRight, Qt::AlignLeft | Qt::AlignVCenter,
                    metrics.elidedText(text, Qt::ElideRight, box.width()));
        return std::min(metrics.horizontalAdvance(text) + 1, box.width());
    }

    static void drawProgress(QPainter& painter, const QRect& line, double fraction,
                             const QStyleOptionViewItem& option) {
        constexpr int steps = 1000;
        QStyleOptionProgressBar bar;
        bar.rect = QRect(line.left(), line.top(), line.width(), barHeight);
        bar.palette = option.palette;
        bar.direction = option.direction;
        bar.maximum = steps;
        bar.progress = static_cast<int>(fraction * steps);
        ControlStyle::shared()->drawControl(QStyle::CE_ProgressBar, &bar, &painter, nullptr);
    }

    void drawTrailing(QPainter& painter, const QRect& row, const ConversionJob& job,
                      const QPalette& palette) const {
        if (job.state.is(JobState::Case::converting)) {
            return;
        }
        const bool isCompleted = job.state.is(JobState::Case::completed);
        const int side = symbolSize(isCompleted ? checkMarkFont_ : bodyFont_);
        const QRect box(row.right() + 1 - side, row.top(), side, row.height());
        if (isCompleted) {
            drawSymbol(painter, box, Symbol::checkmarkCircleFill, side,
                       ThemeColor(ThemeColor::Name::green).color(palette));
        } else {
            constexpr double opacity = 0.7;
            drawSymbol(
                painter, box, Symbol::xmarkCircleFill, side,
                ThemeColor(ThemeColor::Name::secondarySymbol).withOpacity(opacity).color(palette));
        }
    }

    static QString stateText(const JobState& state) {
        switch (state.which()) {
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

    static ThemeColor stateColor(const JobState& state) {
        switch (state.which()) {
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

    const JobsModel& jobs_;
    const JobRowHeights& heights_;
    QFont bodyFont_ = TextFont{}.font();
    QFont nameFont_ = TextFont{TextStyle::body, QFont::Medium}.font();
    QFont captionFont_ = TextFont{TextStyle::caption}.font();
    QFont messageFont_ = TextFont{TextStyle::caption2}.font();
    QFont checkMarkFont_ = TextFont{TextStyle::title3}.font();
};

} // namespace

PlainList::PlainList(const std::shared_ptr<ConverterViewModel>& model, const JobRowHeights& heights,
                     QWidget* parent)
    : QListView(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSelectionMode(QAbstractItemView::NoSelection);
    viewport()->setBackgroundRole(QPalette::NoRole);
    verticalScrollBar()->setStyle(ControlStyle::shared());
    verticalScrollBar()->setAttribute(Qt::WA_OpaquePaintEvent, false);
    auto* jobs = new JobsModel(model, this);
    setModel(jobs);
    setItemDelegate(new RowDelegate(*jobs, heights, this));
}

} // namespace kestrel::bench
