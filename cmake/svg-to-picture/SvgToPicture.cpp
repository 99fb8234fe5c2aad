// Usage: svg-to-picture SVG PICTURE
// Records the painting of an SVG file as a QPicture, in the SVG's units. The picture's bounding
// rectangle has the SVG's default size.
#include <QCoreApplication>
#include <QPainter>
#include <QPicture>
#include <QStringList>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        static_cast<void>(std::fputs("usage: svg-to-picture SVG PICTURE\n", stderr));
        return 2;
    }
    QSvgRenderer renderer(arguments.at(1));
    const QRect box(QPoint(0, 0), renderer.defaultSize());
    QPicture picture;
    picture.setBoundingRect(box);
    QPainter painter(&picture);
    renderer.render(&painter, box);
    painter.end();
    return renderer.isValid() && picture.save(arguments.at(2)) ? 0 : 1;
}
