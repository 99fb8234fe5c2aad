#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <memory>

class QBoxLayout;
class QStackedWidget;

namespace kestrel {

class Button;
class DestinationButton;
class DropZone;
class JobList;
class Label;

/// The queue panel: the jobs, the output folder, and the start button.
class QueueView : public QWidget {
    Q_OBJECT

  public:
    explicit QueueView(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows the model as it is now.
    void refresh();

  private:
    QBoxLayout* makeHeader();
    QWidget* makeMiddle();
    QBoxLayout* makeFooter();
    QString summary() const;
    QString startText() const;
    void refreshMiddle();
    void refreshFooter();

    std::shared_ptr<ConverterViewModel> model_;
    Label* summary_ = nullptr;
    QStackedWidget* middle_ = nullptr;
    DropZone* dropZone_ = nullptr;
    JobList* jobList_ = nullptr;
    DestinationButton* destinationButton_ = nullptr;
    Button* revealButton_ = nullptr;
    Button* startButton_ = nullptr;
    Button* cancelButton_ = nullptr;
};

} // namespace kestrel
