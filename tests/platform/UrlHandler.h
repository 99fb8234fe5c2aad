#pragma once

#include <QObject>
#include <QUrl>

#include <vector>

namespace kestrel::test {

/// Takes, while it lives, the file URLs that would open in the user's desktop.
class UrlHandler final : public QObject {
    Q_OBJECT

  public:
    UrlHandler();
    UrlHandler(const UrlHandler&) = delete;
    UrlHandler& operator=(const UrlHandler&) = delete;
    ~UrlHandler() override;

    const std::vector<QUrl>& opened() const { return opened_; }

  private:
    Q_SLOT void take(const QUrl& url) { opened_.push_back(url); }

    std::vector<QUrl> opened_;
};

} // namespace kestrel::test
