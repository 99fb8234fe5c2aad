#pragma once

#include <qlogging.h>

namespace kestrel {

/// Replaces the abort of Qt 6.4 to 6.11 where the application object finds no display: while it
/// lives, a fatal Qt message ends the process with status 1 and one line on stderr that says what
/// is missing. Qt's other messages are held back and written when it is destroyed. Construct it on
/// the main thread before the application object, destroy it after that; one at a time.
class DisplayErrorHandler {
  public:
    DisplayErrorHandler();
    DisplayErrorHandler(const DisplayErrorHandler&) = delete;
    DisplayErrorHandler& operator=(const DisplayErrorHandler&) = delete;
    ~DisplayErrorHandler();

  private:
    QtMessageHandler previous_;
};

} // namespace kestrel
