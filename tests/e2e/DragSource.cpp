// A window to drag from, as from a file manager:
//
//   drag-source --files PATH...     offers the files as text/uri-list
//   drag-source --uris URI...       offers the URIs as text/uri-list
//   drag-source --text TEXT         offers the text as text/plain
//
// The window is in the top left corner of the screen, beside the drop targets. Prints "ready" when
// it is exposed, "takes" or "declines" for each XdndStatus during a drag, and "copied", "moved" or
// "refused" at the end of each drag. Exits at the end of stdin.
#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QSocketNotifier>
#include <QWidget>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

#include <unistd.h>
#include <xcb/xcb.h>

namespace {

void print(const char* line) {
    std::puts(line);
    static_cast<void>(std::fflush(stdout));
}

/// Prints the XdndStatus and XdndFinished messages of the drop targets.
class XdndPrinter : public QAbstractNativeEventFilter {
  public:
    explicit XdndPrinter(const QGuiApplication& application)
        : connection_(
              application.nativeInterface<QNativeInterface::QX11Application>()->connection()),
          status_(atom("XdndStatus")),
          finished_(atom("XdndFinished")),
          copy_(atom("XdndActionCopy")),
          move_(atom("XdndActionMove")) {}

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* event = static_cast<const xcb_client_message_event_t*>(message);
        // Masks the bit that SendEvent sets.
        constexpr unsigned typeBits = 0x7F;
        if ((event->response_type & typeBits) == XCB_CLIENT_MESSAGE) {
            const bool isAccepted = (event->data.data32[1] & 1U) != 0;
            if (event->type == status_) {
                print(isAccepted ? "takes" : "declines");
            } else if (event->type == finished_) {
                const xcb_atom_t action = event->data.data32[2];
                print(isAccepted && action == copy_   ? "copied"
                      : isAccepted && action == move_ ? "moved"
                                                      : "refused");
            }
        }
        return false;
    }

  private:
    xcb_atom_t atom(std::string_view name) const {
        const auto cookie =
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection_, cookie, nullptr), std::free);
        return reply->atom;
    }

    xcb_connection_t* connection_;
    xcb_atom_t status_;
    xcb_atom_t finished_;
    xcb_atom_t copy_;
    xcb_atom_t move_;
};

/// Encodes the bytes of the path, whatever their text encoding.
QByteArray fileUri(const char* path) {
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
        // Before it is shown, so that the window manager keeps the position. A window moved later
        // could be clicked before the window manager has moved it.
        move(4, 4);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        if (!std::exchange(isReady_, true)) {
            print("ready");
        }
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (!event->buttons().testFlag(Qt::LeftButton)) {
            return;
        }
        auto contents = std::make_unique<QMimeData>();
        contents->setData(QString::fromLatin1(type_), data_);
        auto* drag = new QDrag(this);
        drag->setMimeData(contents.release());
        // An accepted drop ends with XdndFinished, once the target has fetched the data.
        if (drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction) == Qt::IgnoreAction) {
            print("refused");
        }
    }

  private:
    QByteArray type_;
    QByteArray data_;
    bool isReady_ = false;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    if (argc < 3) {
        return 2;
    }
    const bool isText = std::string_view(argv[1]) == "--text";
    const bool areFiles = std::string_view(argv[1]) == "--files";
    QByteArray data = isText ? QByteArray(argv[2]) : QByteArray();
    for (int index = 2; !isText && index < argc; ++index) {
        data += (areFiles ? fileUri(argv[index]) : QByteArray(argv[index])) + "\r\n";
    }
    DragSource source(isText ? "text/plain" : "text/uri-list", data);
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
    XdndPrinter printer(application);
    QCoreApplication::instance()->installNativeEventFilter(&printer);
    return QApplication::exec();
}
