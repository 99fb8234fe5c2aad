#include "UrlHandler.h"

#include <QDesktopServices>
#include <QString>

namespace kestrel::test {

UrlHandler::UrlHandler() {
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "record");
}

UrlHandler::~UrlHandler() {
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

} // namespace kestrel::test
