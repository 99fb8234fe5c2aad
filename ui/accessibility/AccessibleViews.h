#pragma once

namespace kestrel {

/// Installs the accessible interfaces of the views that Qt's own do not fit, job lists included.
/// Idempotent. Called on the main thread, before the first view is created.
void installAccessibleViews();

} // namespace kestrel
