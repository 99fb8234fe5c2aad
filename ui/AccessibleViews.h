#pragma once

namespace kestrel {

/// Teaches assistive technology about the views that the toolkit knows nothing of. Once for the
/// program; more often does no harm.
void installAccessibleViews();

} // namespace kestrel
