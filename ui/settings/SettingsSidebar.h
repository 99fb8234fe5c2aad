#pragma once

#include "ConverterViewModel.h"
#include "FileURL.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QComboBox;
class QVBoxLayout;

namespace kestrel {

class AppBadge;
class FormatGroup;
class Label;
class PercentLabel;
class QualitySlider;
class StatusDot;

/// The settings sidebar: output format, quality, bit depth, and ffmpeg's status.
class SettingsSidebar : public QWidget {
    Q_OBJECT

  public:
    using BinaryLocator = std::function<std::optional<FileURL>()>;

    SettingsSidebar(std::shared_ptr<ConverterViewModel> model, BinaryLocator locateBinary,
                    QWidget* parent = nullptr);

    /// Shows the model as it is now, and locates ffmpeg again.
    void refresh();

    /// Reserves this height, in pixels, at the top.
    void setTopInset(int height);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* makeHeader();
    QWidget* makeStatus();
    void refreshStatus();
    QWidget* makeQualitySection();
    QWidget* makePCMSection();

    /// Writes one change to the settings of the model.
    template <typename Change> void changeSettings(Change change);

    std::shared_ptr<ConverterViewModel> model_;
    BinaryLocator locateBinary_;
    QVBoxLayout* column_ = nullptr;
    AppBadge* badge_ = nullptr;
    FormatGroup* formats_ = nullptr;
    QWidget* qualityControls_ = nullptr;
    QualitySlider* qualitySlider_ = nullptr;
    PercentLabel* qualityLabel_ = nullptr;
    Label* qualityNote_ = nullptr;
    Label* bitDepthLabel_ = nullptr;
    QComboBox* bitDepthPicker_ = nullptr;
    StatusDot* statusDot_ = nullptr;
    Label* status_ = nullptr;
};

} // namespace kestrel
