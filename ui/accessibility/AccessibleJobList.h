#pragma once

namespace kestrel {

/// Exposes job lists and their rows to assistive technology as lists and list items. Only rows that
/// currently have a widget are items, in queue order. Idempotent.
void installAccessibleJobList();

} // namespace kestrel
