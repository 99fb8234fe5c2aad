#pragma once

namespace kestrel {

/// Teaches assistive technology about the views that the toolkit knows nothing of. Calls after the
/// first do nothing.
void installAccessibleViews();

} // namespace kestrel
