#pragma once

#include "Contrast.h"
#include "MixedColor.h"

#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace kestrel {

/// One thing that a widget has painted, and how it contrasts with what was there before.
struct Painted {
    enum class Kind { text, symbol, line, area };

    Kind kind;
    /// In the coordinates of the rendered widget.
    QRect place;
    double contrast;
    /// As painted where the contrast was measured.
    QColor color;
    QColor background;
    /// The text, or empty.
    QString text;
    /// The pen's width, in pixels, or 0.
    double lineWidth = 0;
};

/// Paints an image, and records each text, symbol, line and area with its contrast, from the
/// colours passed to the painter: antialiasing plays no part. The image keeps neither texts
/// nor lines: they are no background of each other.
class RecordingEngine : public QPaintEngine {
  public:
    explicit RecordingEngine(QImage image)
        : QPaintEngine(QPaintEngine::AllFeatures), image_(std::move(image)) {}

    const std::vector<Painted>& painted() const { return painted_; }

    bool begin(QPaintDevice*) override {
        clip_.reset();
        return painter_.begin(&image_);
    }

    bool end() override { return painter_.end(); }

    Type type() const override { return QPaintEngine::User; }

    void updateState(const QPaintEngineState& current) override {
        const DirtyFlags changed = current.state();
        painter_.setTransform(current.transform());
        painter_.setPen(current.pen());
        painter_.setBrush(current.brush());
        painter_.setBrushOrigin(current.brushOrigin());
        painter_.setOpacity(current.opacity());
        painter_.setRenderHints(painter_.renderHints(), false);
        painter_.setRenderHints(current.renderHints());
        painter_.setCompositionMode(current.compositionMode());
        if (changed.testFlag(DirtyClipRegion)) {
            clip(current.clipOperation(), current.transform().map(current.clipRegion()));
        }
        if (changed.testFlag(DirtyClipPath)) {
            const QPainterPath path = current.transform().map(current.clipPath());
            clip(current.clipOperation(), QRegion(path.toFillPolygon().toPolygon()));
        }
    }

    void drawPath(const QPainterPath& path) override {
        const QPainterPath shape = painter_.transform().map(path);
        if (painter_.brush().style() == Qt::SolidPattern) {
            record(Painted::Kind::area, shape.boundingRect(), painter_.brush().color(),
                   pointsInside(shape), medianShare);
        }
        const QPen pen = painter_.pen();
        if (pen.style() != Qt::NoPen) {
            recordLine(shape);
        }
        applyClip();
        painter_.setPen(Qt::NoPen);
        painter_.drawPath(path);
        painter_.setPen(pen);
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        QPainterPath path;
        path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
        if (mode == PolylineMode) {
            recordLine(painter_.transform().map(path));
            return;
        }
        path.closeSubpath();
        drawPath(path);
    }

    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override {
        recordSymbol(target, pixmap.copy(source.toRect()).toImage());
        applyClip();
        painter_.drawPixmap(target, pixmap, source);
    }

    void drawTextItem(const QPointF& origin, const QTextItem& item) override {
        const QRectF box(origin.x(), origin.y() - item.ascent(), item.width(),
                         item.ascent() + item.descent());
        const QRectF place = painter_.transform().mapRect(box);
        record(Painted::Kind::text, place, painter_.pen().color(), pointsOf(place), 0, item.text());
    }

  private:
    static constexpr double medianShare = 0.5;
    /// How much of a line may cross something else: a ring around a thumb crosses the track.
    static constexpr double crossingShare = 0.2;

    void clip(Qt::ClipOperation operation, const QRegion& region) {
        if (operation == Qt::NoClip) {
            clip_.reset();
        } else {
            clip_ = operation == Qt::IntersectClip && clip_ ? *clip_ & region : region;
        }
    }

    /// The region that may be painted on, in pixels of the image. The system clip is what Qt lets a
    /// widget paint on.
    QRegion visibleRegion() const {
        QRegion region = image_.rect();
        if (!systemClip().isEmpty()) {
            region &= systemClip();
        }
        return clip_ ? region & *clip_ : region;
    }

    /// Clips what is painted next to the visible region.
    void applyClip() {
        const QTransform transform = painter_.transform();
        painter_.resetTransform();
        painter_.setClipRegion(visibleRegion());
        painter_.setTransform(transform);
    }

    static std::vector<QPoint> pointsOf(const QRectF& rect) {
        const QRect bounds = rect.toAlignedRect();
        std::vector<QPoint> points;
        for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
            for (int x = bounds.left(); x <= bounds.right(); ++x) {
                points.emplace_back(x, y);
            }
        }
        return points;
    }

    /// Pixels of a shape, given in the image's coordinates; of a large one a grid of them.
    static std::vector<QPoint> pointsInside(const QPainterPath& shape) {
        constexpr int most = 16;
        const QRect bounds = shape.boundingRect().toAlignedRect();
        const int across = 1 + bounds.width() / most;
        const int down = 1 + bounds.height() / most;
        std::vector<QPoint> points;
        for (int y = bounds.top(); y <= bounds.bottom(); y += down) {
            for (int x = bounds.left(); x <= bounds.right(); x += across) {
                if (shape.contains(QPointF(x + 0.5, y + 0.5))) {
                    points.emplace_back(x, y);
                }
            }
        }
        return points;
    }

    void recordLine(const QPainterPath& shape) {
        constexpr int samples = 200;
        std::vector<QPoint> points;
        for (int i = 0; i < samples; ++i) {
            const QPointF point = shape.pointAtPercent((i + 0.5) / samples);
            points.emplace_back(static_cast<int>(std::floor(point.x())),
                                static_cast<int>(std::floor(point.y())));
        }
        const QPen& pen = painter_.pen();
        record(Painted::Kind::line, shape.boundingRect(), pen.color(), points, crossingShare, {},
               std::max(pen.widthF(), 1.0));
    }

    void recordSymbol(const QRectF& target, const QImage& symbol) {
        int strongest = 1;
        for (int y = 0; y < symbol.height(); ++y) {
            for (int x = 0; x < symbol.width(); ++x) {
                strongest = std::max(strongest, symbol.pixelColor(x, y).alpha());
            }
        }
        std::vector<QPoint> points;
        QColor color;
        const QPointF corner = painter_.transform().map(target.topLeft());
        for (int y = 0; y < symbol.height(); ++y) {
            for (int x = 0; x < symbol.width(); ++x) {
                // Antialiased edges are paler.
                if (symbol.pixelColor(x, y).alpha() >= strongest - 1) {
                    color = symbol.pixelColor(x, y);
                    points.push_back(corner.toPoint() + QPoint(x, y));
                }
            }
        }
        record(Painted::Kind::symbol, painter_.transform().mapRect(target), color, points, 0);
    }

    /// Records the contrast of a colour with the visible ones of these pixels: the worst, except
    /// for a share of them.
    void record(Painted::Kind kind, const QRectF& place, const QColor& color,
                const std::vector<QPoint>& points, double share, const QString& text = {},
                double lineWidth = 0) {
        const QRegion visible = visibleRegion();
        const double opacity = color.alphaF() * painter_.opacity();
        std::vector<Painted> candidates;
        std::optional<QRgb> last;
        for (const QPoint& point : points) {
            if (!visible.contains(point)) {
                continue;
            }
            const QColor below = image_.pixelColor(point);
            if (!candidates.empty() && last == below.rgb()) {
                candidates.push_back(candidates.back());
                continue;
            }
            last = below.rgb();
            const QColor above = mixed(below, color, opacity);
            candidates.push_back({kind, place.toAlignedRect(), contrast(above, below), above, below,
                                  text, lineWidth});
        }
        if (candidates.empty()) {
            return;
        }
        const auto worst =
            candidates.begin() +
            static_cast<std::ptrdiff_t>(share * static_cast<double>(candidates.size() - 1));
        std::nth_element(
            candidates.begin(), worst, candidates.end(),
            [](const Painted& a, const Painted& b) { return a.contrast < b.contrast; });
        painted_.push_back(*worst);
    }

    QImage image_;
    QPainter painter_;
    std::optional<QRegion> clip_;
    std::vector<Painted> painted_;
};

/// A paint device for QWidget::render, with a device pixel ratio of 1.
class PaintRecorder : public QPaintDevice {
  public:
    explicit PaintRecorder(const QWidget& widget) : size_(widget.size()), engine_(blank(widget)) {}

    QPaintEngine* paintEngine() const override { return &engine_; }

    const std::vector<Painted>& painted() const { return engine_.painted(); }

  protected:
    int metric(PaintDeviceMetric metric) const override {
        constexpr int dotsPerInch = 96;
        constexpr double inch = 25.4;
        switch (metric) {
        case PdmWidth:
            return size_.width();
        case PdmHeight:
            return size_.height();
        case PdmWidthMM:
            return static_cast<int>(size_.width() * inch / dotsPerInch);
        case PdmHeightMM:
            return static_cast<int>(size_.height() * inch / dotsPerInch);
        case PdmNumColors:
            return std::numeric_limits<int>::max();
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return dotsPerInch;
        default:
            return QPaintDevice::metric(metric);
        }
    }

  private:
    static QImage blank(const QWidget& widget) {
        QImage image(widget.size(), QImage::Format_RGB32);
        image.fill(widget.palette().color(QPalette::Window));
        return image;
    }

    QSize size_;
    mutable RecordingEngine engine_;
};

/// Everything that a widget and its children paint in a part of the widget, in the order of
/// painting.
inline std::vector<Painted> paintedBy(QWidget& widget, const QRect& part) {
    PaintRecorder recorder(widget);
    // With a painter of its own for each widget, QWidget::render does not set the system clip.
    QPainter painter(&recorder);
    widget.render(&painter, part.topLeft(), part);
    painter.end();
    return recorder.painted();
}

} // namespace kestrel
