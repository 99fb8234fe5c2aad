#include "SettingsSidebar.h"

#include "FormatButton.h"
#include "SectionLabel.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kestrel {
namespace {

/// The slider counts in whole numbers; this many make one percent of quality.
constexpr int sliderStepsPerPercent = 1000;
constexpr int lowestQuality = 30;
constexpr int highestQuality = 100;

QVBoxLayout* addColumn(QWidget* parent, int spacing) {
    auto* column = new QVBoxLayout(parent);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

QLabel* makeLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

} // namespace

SettingsSidebar::SettingsSidebar(std::shared_ptr<ConverterViewModel> model,
                                 BinaryLocator locateBinary, QWidget* parent)
    : QWidget(parent), model_(std::move(model)), locateBinary_(std::move(locateBinary)) {
    setFixedWidth(310);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 32, 24, 22);
    column->setSpacing(22);
    column->addWidget(makeHeader());
    column->addWidget(makeFormatSection());
    column->addWidget(makeQualitySection());
    column->addWidget(makePCMSection());
    column->addStretch(1);
    status_ = makeLabel(QString(), this);
    status_->setObjectName(QStringLiteral("ffmpegStatus"));
    column->addWidget(status_);
    refresh();
}

QWidget* SettingsSidebar::makeHeader() {
    auto* header = new QWidget(this);
    auto* column = addColumn(header, 1);
    column->addWidget(makeLabel(tr("Kestrel"), header));
    column->addWidget(makeLabel(tr("Opus, made universal"), header));
    return header;
}

QWidget* SettingsSidebar::makeFormatSection() {
    auto* section = new QWidget(this);
    auto* column = addColumn(section, 10);
    column->addWidget(new SectionLabel(QStringLiteral("OUTPUT FORMAT"), section));
    for (const OutputFormat format : OutputFormat::allCases) {
        const auto select = [this, format] {
            changeSettings([format](ConversionSettings& settings) { settings.format = format; });
        };
        formatButtons_.push_back(new FormatButton(format, select, section));
        column->addWidget(formatButtons_.back());
    }
    return section;
}

QWidget* SettingsSidebar::makeQualitySection() {
    auto* section = new QWidget(this);
    auto* column = addColumn(section, 10);
    column->addWidget(new SectionLabel(QStringLiteral("QUALITY"), section));

    qualityControls_ = new QWidget(section);
    auto* row = new QHBoxLayout(qualityControls_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    qualitySlider_ = new QSlider(Qt::Horizontal, qualityControls_);
    qualitySlider_->setAccessibleName(tr("Quality"));
    qualitySlider_->setRange(lowestQuality * sliderStepsPerPercent,
                             highestQuality * sliderStepsPerPercent);
    qualitySlider_->setSingleStep(sliderStepsPerPercent);
    qualitySlider_->setPageStep(10 * sliderStepsPerPercent);
    connect(qualitySlider_, &QSlider::valueChanged, this, [this](int value) {
        changeSettings([value](ConversionSettings& settings) {
            settings.quality = static_cast<double>(value) / sliderStepsPerPercent;
        });
    });
    qualityLabel_ = makeLabel(QString(), qualityControls_);
    qualityLabel_->setObjectName(QStringLiteral("qualityLabel"));
    qualityLabel_->setFixedWidth(38);
    qualityLabel_->setAlignment(Qt::AlignCenter);
    row->addWidget(qualitySlider_);
    row->addWidget(qualityLabel_);
    column->addWidget(qualityControls_);

    qualityNote_ = makeLabel(QString(), section);
    qualityNote_->setObjectName(QStringLiteral("qualityNote"));
    qualityNote_->setWordWrap(true);
    column->addWidget(qualityNote_);
    return section;
}

QWidget* SettingsSidebar::makePCMSection() {
    auto* section = new QWidget(this);
    auto* column = addColumn(section, 12);
    column->addWidget(new SectionLabel(QStringLiteral("PCM OPTIONS"), section));

    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    auto* label = makeLabel(tr("Bit depth"), section);
    bitDepthPicker_ = new QComboBox(section);
    bitDepthPicker_->setAccessibleName(tr("Bit depth"));
    label->setBuddy(bitDepthPicker_);
    for (const PCMBitDepth depth : PCMBitDepth::allCases) {
        const std::string_view name = depth.rawValue();
        bitDepthPicker_->addItem(
            QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    }
    connect(bitDepthPicker_, &QComboBox::currentIndexChanged, this, [this](int index) {
        changeSettings([index](ConversionSettings& settings) {
            settings.bitDepth = PCMBitDepth::allCases.at(static_cast<std::size_t>(index));
        });
    });
    row->addWidget(label);
    row->addWidget(bitDepthPicker_, 1);
    column->addLayout(row);
    return section;
}

template <typename Change> void SettingsSidebar::changeSettings(Change change) {
    ConversionSettings settings = model_->settings();
    change(settings);
    model_->setSettings(settings);
}

void SettingsSidebar::refresh() {
    const ConversionSettings& settings = model_->settings();
    const bool isMP3 = settings.format == OutputFormat::mp3;
    for (FormatButton* button : formatButtons_) {
        button->setSelected(button->format() == settings.format);
    }

    {
        // The slider stays within its range; the model keeps the value that it has.
        const QSignalBlocker blocker(qualitySlider_);
        const double shown = std::clamp(settings.quality, static_cast<double>(lowestQuality),
                                        static_cast<double>(highestQuality));
        qualitySlider_->setValue(static_cast<int>(std::lround(shown * sliderStepsPerPercent)));
    }
    qualityLabel_->setText(tr("%1%").arg(QString::number(std::trunc(settings.quality), 'f', 0)));
    qualityControls_->setVisible(isMP3);
    qualityNote_->setText(isMP3 ? tr("Higher quality creates larger MP3 files.")
                                : tr("AIFF and WAV preserve uncompressed PCM audio."));

    {
        const QSignalBlocker blocker(bitDepthPicker_);
        bitDepthPicker_->setCurrentIndex(settings.bitDepth == PCMBitDepth::sixteen ? 0 : 1);
    }
    bitDepthPicker_->setEnabled(!isMP3);

    status_->setText(locateBinary_() ? tr("FFmpeg ready") : tr("FFmpeg required"));
}

} // namespace kestrel
