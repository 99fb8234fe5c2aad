#pragma once

#include "ConverterViewModel.h"
#include "Ink.h"
#include "JobRowMetrics.h"

#include <QWidget>

#include <memory>
#include <optional>

class QBoxLayout;

namespace kestrel {

class Button;
class ElidedLabel;
class FractionBar;
class Label;
class SymbolView;

/// Shows one job: name, folder, state, and what the state brings with it.
class JobRow : public QWidget {
    Q_OBJECT

  public:
    /// A failure message is shown on at most this many lines.
    static constexpr int maxMessageLines = 2;

    explicit JobRow(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows a copy of the job, in place of any job shown before.
    void setJob(const ConversionJob& job);

    /// Only after `setJob`.
    const ConversionJob& job() const { return job_.value(); }

    /// Gives the keyboard focus to the row's remove button, if it has one.
    void focusRemoveButton(Qt::FocusReason reason);

    /// How high rows must be inside a parent, for a width in pixels.
    static JobRowMetrics measure(const std::shared_ptr<ConverterViewModel>& model, QWidget* parent,
                                 int width);

  private:
    QBoxLayout* makeTexts();
    void showSource();
    void showState();
    void updateAccessibleNames();
    QString stateText() const;
    Ink stateInk() const;

    std::shared_ptr<ConverterViewModel> model_;
    std::optional<ConversionJob> job_;
    ElidedLabel* name_ = nullptr;
    ElidedLabel* folder_ = nullptr;
    Label* state_ = nullptr;
    FractionBar* progress_ = nullptr;
    ElidedLabel* message_ = nullptr;
    SymbolView* checkMark_ = nullptr;
    Button* removeButton_ = nullptr;
};

} // namespace kestrel
