#include "VectorImage.h"

#include "FatalError.h"

#include <QPainter>
#include <QPicture>

namespace kestrel {

void paintVectorImage(QPainter& painter, const QString& name, double size) {
    QPicture picture;
    if (!picture.load(QStringLiteral(":/images/%1.pic").arg(name))) {
        fatalError("a vector image is missing");
    }
    const double scale = size / picture.boundingRect().width();
    painter.save();
    painter.scale(scale, scale);
    picture.play(&painter);
    painter.restore();
}

} // namespace kestrel
