#pragma once

#include <qlogging.h>

namespace kestrel {

/// A Qt message handler for startup, since Qt 6.4 to 6.11 abort without a display: while it lives,
/// a fatal message ends the process with status 1 and one line on stderr that says what is missing.
/// Other messages are deferred until its destruction. Construct it on the main thread before the
/// application object, destroy it once that is constructed; one at a time.
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
