#pragma once

#include <QObject>
#include <QUrl>

#include <vector>

namespace kestrel::test {

/// Records, while it lives, the file URLs passed to QDesktopServices, which does not open them.
class UrlHandler final : public QObject {
    Q_OBJECT

  public:
    UrlHandler();
    UrlHandler(const UrlHandler&) = delete;
    UrlHandler& operator=(const UrlHandler&) = delete;
    ~UrlHandler() override;

    const std::vector<QUrl>& opened() const { return opened_; }

  private:
    Q_SLOT void record(const QUrl& url) { opened_.push_back(url); }

    std::vector<QUrl> opened_;
};

} // namespace kestrel::test
