#pragma once

#include "ConversionJob.h"
#include "ConverterViewModel.h"
#include "JobRowMetrics.h"
#include "ThemeColor.h"

#include <QWidget>

#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

class QBoxLayout;
class QSpacerItem;

namespace kestrel {

class Button;
class ElidedLabel;
class ProgressBar;
class Label;
class SymbolView;

/// Shows one job: name, folder, state, and the widgets that depend on the state.
class JobRow : public QWidget {
    Q_OBJECT

  public:
    /// A failure message is shown on at most this many lines.
    static constexpr int maxMessageLines = 2;

    /// The padding on either side of the contents, in pixels; keeps the focus ring clear of them.
    static constexpr int overhang = 8;

    /// The offset of the texts from the start of the contents, in pixels.
    static constexpr int textIndent = 56;

    explicit JobRow(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows a copy of the job, in place of any job shown before.
    void setJob(const ConversionJob& job);

    /// Requires: `setJob` has been called.
    const ConversionJob& job() const { return job_.value(); }

    /// Drops the updates that Qt posts for every widget that is shown: a row that a scroll uncovers
    /// would be painted twice.
    void discardPostedUpdates();

    /// Sets the position exposed to assistive technology; `index` starts at 0.
    void setPosition(std::size_t index, std::size_t count);

    /// Returns true iff the row shows a remove button.
    bool isRemovable() const;

    /// Never null; hidden unless `isRemovable()`.
    Button* removeButton() const;

    /// Measures rows inside a parent, for a width in pixels.
    static JobRowMetrics measure(const std::shared_ptr<ConverterViewModel>& model, QWidget* parent,
                                 int width);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QBoxLayout* makeTexts();
    void alignTrailing();
    void showSource();
    void showState();
    void updateAccessibleNames();
    QString stateText() const;
    ThemeColor stateColor() const;

    std::shared_ptr<ConverterViewModel> model_;
    std::optional<ConversionJob> job_;
    /// The index and the count that are exposed.
    std::optional<std::pair<std::size_t, std::size_t>> position_;
    QSpacerItem* leadingSpace_ = nullptr;
    QSpacerItem* trailingSpace_ = nullptr;
    ElidedLabel* name_ = nullptr;
    ElidedLabel* folder_ = nullptr;
    Label* state_ = nullptr;
    ProgressBar* progress_ = nullptr;
    ElidedLabel* message_ = nullptr;
    SymbolView* checkMark_ = nullptr;
    Button* removeButton_ = nullptr;
};

} // namespace kestrel
