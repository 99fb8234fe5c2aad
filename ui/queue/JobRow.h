#pragma once

#include "ConversionJob.h"
#include "ConverterViewModel.h"
#include "JobRowMetrics.h"
#include "ThemeColor.h"

#include <QWidget>

#include <cstddef>
#include <memory>
#include <optional>

class QBoxLayout;

namespace kestrel {

class Button;
class ElidedLabel;
class ProgressBar;
class Label;
class SymbolView;

/// Shows one job: name, folder, state, and what the state brings with it.
class JobRow : public QWidget {
    Q_OBJECT

  public:
    /// A failure message is shown on at most this many lines.
    static constexpr int maxMessageLines = 2;

    /// How far the row reaches beyond its contents on either side, in pixels, so that the mark of
    /// the keyboard focus does not touch them.
    static constexpr int overhang = 8;

    /// How far from the start of the contents the texts start, in pixels.
    static constexpr int textIndent = 56;

    explicit JobRow(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows a copy of the job, in place of any job shown before.
    void setJob(const ConversionJob& job);

    /// Only after `setJob`.
    const ConversionJob& job() const { return job_.value(); }

    /// Tells assistive technology which one of how many the job is, the first one being 0.
    void setPosition(std::size_t index, std::size_t count);

    /// Whether the row has a remove button now.
    bool isRemovable() const;

    /// Never null; hidden in rows that have none.
    Button* removeButton() const;

    /// How high rows must be inside a parent, for a width in pixels.
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
    ElidedLabel* name_ = nullptr;
    ElidedLabel* folder_ = nullptr;
    Label* state_ = nullptr;
    ProgressBar* progress_ = nullptr;
    ElidedLabel* message_ = nullptr;
    SymbolView* checkMark_ = nullptr;
    Button* removeButton_ = nullptr;
};

} // namespace kestrel
