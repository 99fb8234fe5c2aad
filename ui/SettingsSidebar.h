#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QSlider;

namespace kestrel {

class FormatButton;

/// The column of settings: output format, quality, bit depth, and whether ffmpeg is there.
class SettingsSidebar : public QWidget {
    Q_OBJECT

  public:
    using BinaryLocator = std::function<std::optional<FileURL>()>;

    SettingsSidebar(std::shared_ptr<ConverterViewModel> model, BinaryLocator locateBinary,
                    QWidget* parent = nullptr);

    /// Shows the model as it is now, and looks for ffmpeg anew.
    void refresh();

  private:
    QWidget* makeHeader();
    QWidget* makeFormatSection();
    QWidget* makeQualitySection();
    QWidget* makePCMSection();

    /// Writes one change to the settings of the model.
    template <typename Change> void changeSettings(Change change);

    std::shared_ptr<ConverterViewModel> model_;
    BinaryLocator locateBinary_;
    std::vector<FormatButton*> formatButtons_;
    QWidget* qualityControls_ = nullptr;
    QSlider* qualitySlider_ = nullptr;
    QLabel* qualityLabel_ = nullptr;
    QLabel* qualityNote_ = nullptr;
    QComboBox* bitDepthPicker_ = nullptr;
    QLabel* status_ = nullptr;
};

} // namespace kestrel
