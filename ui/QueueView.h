#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <memory>

class QBoxLayout;
class QLabel;
class QPushButton;
class QStackedWidget;
class QToolButton;

namespace kestrel {

class DestinationButton;
class DropZone;
class JobList;

/// The queue panel: what is queued, where it goes, and the button that starts it.
class QueueView : public QWidget {
    Q_OBJECT

  public:
    explicit QueueView(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows the model as it is now.
    void refresh();

  private:
    QBoxLayout* makeHeader();
    QBoxLayout* makeFooter();
    QString summary() const;
    QString startText() const;
    void refreshMiddle();
    void refreshFooter();

    std::shared_ptr<ConverterViewModel> model_;
    QLabel* summary_ = nullptr;
    QStackedWidget* middle_ = nullptr;
    DropZone* dropZone_ = nullptr;
    JobList* jobList_ = nullptr;
    DestinationButton* destinationButton_ = nullptr;
    QToolButton* revealButton_ = nullptr;
    QPushButton* startButton_ = nullptr;
    QPushButton* cancelButton_ = nullptr;
};

} // namespace kestrel
