#pragma once

namespace kestrel {

/// Installs the accessible interfaces of the views that Qt has none for, job lists included. Calls
/// after the first do nothing. Main thread, before the first view.
void installAccessibleViews();

} // namespace kestrel
