#include "SettingsSidebar.h"

#include "AppBadge.h"
#include "BandFill.h"
#include "ConversionSettings.h"
#include "FormatGroup.h"
#include "Label.h"
#include "OutputFormat.h"
#include "PCMBitDepth.h"
#include "PercentLabel.h"
#include "PopUpButton.h"
#include "QualitySlider.h"
#include "SectionLabel.h"
#include "StatusDot.h"
#include "ThemeColor.h"

#include <QHBoxLayout>
#include <QLinearGradient>
#include <QPainter>
#include <QPalette>
#include <QVBoxLayout>

#include <cstddef>
#include <utility>

namespace kestrel {
namespace {

constexpr int sidebarWidth = 310;
constexpr QMargins padding(24, 32, 24, 22);

/// The colours of the sidebar, which is dark on every desktop.
QPalette darkPalette() {
    const QColor text = Qt::white;
    const QColor window(0x17, 0x17, 0x29);
    const QColor raised(0x2A, 0x2A, 0x3C);
    QPalette palette(text, raised, raised.lighter(), raised.darker(), raised.lighter(), text, text,
                     raised, window);
    setHighlight(palette);
    return palette;
}

QVBoxLayout* addColumn(QWidget* parent, int spacing) {
    auto* column = new QVBoxLayout(parent);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

Label* makeCaption(const QString& text, QWidget* parent) {
    auto* label = new Label(text, {TextStyle::caption}, parent);
    label->setThemeColor(ThemeColor::Name::secondary);
    return label;
}

} // namespace

template <typename Change> void SettingsSidebar::changeSettings(Change change) {
    ConversionSettings settings = model_->settings();
    change(settings);
    model_->setSettings(settings);
}

SettingsSidebar::SettingsSidebar(std::shared_ptr<ConverterViewModel> model,
                                 BinaryLocator locateBinary, QWidget* parent)
    : QWidget(parent), model_(std::move(model)), locateBinary_(std::move(locateBinary)) {
    setAccessibleName(tr("Settings"));
    setFixedWidth(sidebarWidth);
    setPalette(darkPalette());
    setAttribute(Qt::WA_OpaquePaintEvent);
    column_ = addColumn(this, 22);
    column_->setContentsMargins(padding);
    column_->addWidget(makeHeader());
    const auto choose = [this](OutputFormat format) {
        changeSettings([format](ConversionSettings& settings) { settings.format = format; });
    };
    formats_ = new FormatGroup(choose, this);
    column_->addWidget(formats_);
    column_->addWidget(makeQualitySection());
    column_->addWidget(makePCMSection());
    column_->addStretch(1);
    column_->addWidget(makeStatus());
    refresh();
}

void SettingsSidebar::setTopInset(int height) {
    column_->setContentsMargins(padding + QMargins(0, height, 0, 0));
}

QWidget* SettingsSidebar::makeHeader() {
    auto* header = new QWidget(this);
    badge_ = new AppBadge(header);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addStretch(1);
    auto* title = new Label(tr("Kestrel"), {TextStyle::title2, QFont::Bold}, header);
    title->setObjectName(QStringLiteral("appTitle"));
    //: What the program does, in a few words below its name.
    auto* subtitle = makeCaption(tr("Opus, made universal"), header);
    subtitle->setObjectName(QStringLiteral("appSubtitle"));
    texts->addWidget(title);
    texts->addWidget(subtitle);
    texts->addStretch(1);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addWidget(badge_, 0, Qt::AlignVCenter);
    row->addLayout(texts);
    return header;
}

QWidget* SettingsSidebar::makeQualitySection() {
    auto* section = new QWidget(this);
    auto* column = addColumn(section, 10);
    column->addWidget(new SectionLabel(QStringLiteral("QUALITY"), section));

    qualityControls_ = new QWidget(section);
    auto* row = new QHBoxLayout(qualityControls_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    qualitySlider_ = new QualitySlider(qualityControls_);
    qualitySlider_->setAccessibleName(tr("Quality"));
    //: The unit of the quality, said after its value.
    qualitySlider_->setAccessibleDescription(tr("percent"));
    connect(qualitySlider_, &QualitySlider::qualityChanged, this, [this](double quality) {
        changeSettings([quality](ConversionSettings& settings) { settings.quality = quality; });
    });
    qualityLabel_ = new PercentLabel(38, qualityControls_);
    qualityLabel_->setObjectName(QStringLiteral("qualityLabel"));
    row->addWidget(qualitySlider_);
    row->addWidget(qualityLabel_);
    column->addWidget(qualityControls_);

    qualityNote_ = makeCaption(QString(), section);
    qualityNote_->setObjectName(QStringLiteral("qualityNote"));
    column->addWidget(qualityNote_);
    return section;
}

QWidget* SettingsSidebar::makePCMSection() {
    auto* section = new QWidget(this);
    auto* column = addColumn(section, 12);
    column->addWidget(new SectionLabel(QStringLiteral("PCM OPTIONS"), section));

    bitDepthLabel_ = new Label(tr("Bit depth"), {}, section);
    bitDepthLabel_->setObjectName(QStringLiteral("bitDepthLabel"));
    bitDepthPicker_ = new PopUpButton(section);
    bitDepthPicker_->setAccessibleName(tr("Bit depth"));
    bitDepthLabel_->setBuddy(bitDepthPicker_);
    for (const PCMBitDepth depth : PCMBitDepth::allCases) {
        bitDepthPicker_->addItem(QString::fromUtf8(depth.rawValue()));
    }
    connect(bitDepthPicker_, &QComboBox::activated, this, [this](int index) {
        changeSettings([index](ConversionSettings& settings) {
            settings.bitDepth = PCMBitDepth::allCases.at(static_cast<std::size_t>(index));
        });
    });
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(bitDepthLabel_);
    row->addWidget(bitDepthPicker_, 1);
    column->addLayout(row);
    return section;
}

QWidget* SettingsSidebar::makeStatus() {
    auto* row = new QWidget(this);
    statusDot_ = new StatusDot(row);
    status_ = makeCaption(QString(), row);
    status_->setObjectName(QStringLiteral("ffmpegStatus"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(7);
    layout->addWidget(statusDot_, 0, Qt::AlignVCenter);
    layout->addWidget(status_);
    return row;
}

void SettingsSidebar::refresh() {
    const ConversionSettings& settings = model_->settings();
    const bool isMP3 = settings.format == OutputFormat::mp3;
    formats_->setSelected(settings.format);
    qualitySlider_->showQuality(settings.quality);
    qualityLabel_->setPercent(settings.quality);
    qualityControls_->setVisible(isMP3);
    qualityNote_->setText(isMP3 ? tr("Higher quality creates larger MP3 files.")
                                : tr("AIFF and WAV preserve uncompressed PCM audio."));

    bitDepthPicker_->setCurrentText(QString::fromUtf8(settings.bitDepth.rawValue()));
    bitDepthPicker_->setEnabled(!isMP3);
    bitDepthLabel_->setEnabled(!isMP3);
    refreshStatus();
}

void SettingsSidebar::refreshStatus() {
    statusDot_->setThemeColor(locateBinary_() ? ThemeColor::Name::green : ThemeColor::Name::orange);
    status_->setText(locateBinary_() ? tr("FFmpeg ready") : tr("FFmpeg required"));
}

void SettingsSidebar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QLinearGradient gradient(0, 0, width(), height());
    gradient.setColorAt(0, QColor::fromRgbF(0.08F, 0.10F, 0.16F));
    gradient.setColorAt(1, QColor::fromRgbF(0.10F, 0.07F, 0.16F));
    fillInBands(painter, rect(), gradient);
    AppBadge::drawGlow(painter, QRect(badge_->mapTo(this, QPoint()), badge_->size()), palette());
}

} // namespace kestrel
