#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <string>

namespace kestrel::test {

/// Sets an environment variable while it lives.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, const std::string& value) : name_(name), old_(qgetenv(name)) {
        qputenv(name, QByteArray::fromStdString(value));
    }

    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

    ~ScopedVariable() {
        if (old_.isNull()) {
            qunsetenv(name_);
        } else {
            qputenv(name_, old_);
        }
    }

  private:
    const char* name_;
    QByteArray old_;
};

} // namespace kestrel::test
