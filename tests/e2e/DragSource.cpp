// A window that things can be dragged out of, as out of a file manager:
//
//   drag-source --files PATH...     offers the files as a list of locations
//   drag-source --text TEXT         offers a text
//
// Its window is in the display's corner, beside what a scenario drops onto. Prints "ready" when the
// window is exposed there, while something is dragged each answer of the window below it, "takes"
// or "declines", and for each drag that ended the word "copied", "moved" or "refused". Ends when
// its standard input does.
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

void print(const char* word) {
    std::puts(word);
    static_cast<void>(std::fflush(stdout));
}

/// Prints what the windows that something is dragged over and dropped onto say to it.
class Answers : public QAbstractNativeEventFilter {
  public:
    explicit Answers(const QGuiApplication& application)
        : connection_(
              application.nativeInterface<QNativeInterface::QX11Application>()->connection()),
          status_(atom("XdndStatus")),
          finished_(atom("XdndFinished")),
          copy_(atom("XdndActionCopy")),
          move_(atom("XdndActionMove")) {}

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* event = static_cast<const xcb_client_message_event_t*>(message);
        // Without the bit that tells messages of other programs.
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
        // Before it is shown: the window manager leaves it there. A window that is moved later may
        // be pressed at before the window manager has moved it.
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
        // Of a drop, the other program tells the end when it has fetched everything.
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
    Answers answers(application);
    QCoreApplication::instance()->installNativeEventFilter(&answers);
    return QApplication::exec();
}
