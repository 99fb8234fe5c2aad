#pragma once

class QString;

namespace kestrel {

/// Returns the text between a first strong isolate (FSI) and its end (PDI), so that it cannot
/// reorder the text around it. Closes isolates that the text leaves open; a PDI without an isolate
/// becomes U+FFFD. Thread-safe.
QString bidiIsolated(const QString& text);

} // namespace kestrel
