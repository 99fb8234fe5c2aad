// A window that things can be dragged out of, as out of a file manager:
//
//   drag-source --files PATH...     offers the files as a list of locations
//   drag-source --text TEXT         offers a text
//
// Prints "ready" when the window is there, and for each drag that ended the word "copied", "moved"
// or "refused". Ends when its standard input does.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QSocketNotifier>
#include <QUrl>
#include <QWidget>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include <unistd.h>

namespace {

/// The bytes of the path as they are: no encoding is looked at.
QByteArray locationOf(const char* path) {
    return "file://" + QByteArray(path).toPercentEncoding("/");
}

class DragSource : public QWidget {
  public:
    DragSource(QByteArray mimeType, QByteArray bytes)
        : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
          type_(std::move(mimeType)),
          data_(std::move(bytes)) {
        setWindowTitle(QStringLiteral("Drag source"));
        setFixedSize(100, 60);
    }

  protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!event->buttons().testFlag(Qt::LeftButton)) {
            return;
        }
        auto contents = std::make_unique<QMimeData>();
        contents->setData(QString::fromLatin1(type_), data_);
        auto* drag = new QDrag(this);
        drag->setMimeData(contents.release());
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
        std::puts(action == Qt::CopyAction   ? "copied"
                  : action == Qt::MoveAction ? "moved"
                                             : "refused");
        static_cast<void>(std::fflush(stdout));
    }

  private:
    QByteArray type_;
    QByteArray data_;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (argc < 3) {
        return 2;
    }
    const bool areFiles = std::string_view(argv[1]) == "--files";
    QByteArray data = areFiles ? QByteArray() : QByteArray(argv[2]);
    for (int index = 2; areFiles && index < argc; ++index) {
        data += locationOf(argv[index]) + "\r\n";
    }
    DragSource source(areFiles ? "text/uri-list" : "text/plain", data);
    source.show();
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, &application,
                     &QCoreApplication::quit);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [] {
        char byte = 0;
        if (::read(STDIN_FILENO, &byte, 1) <= 0) {
            QCoreApplication::quit();
        }
    });
    std::puts("ready");
    static_cast<void>(std::fflush(stdout));
    return QApplication::exec();
}
