#pragma once

namespace kestrel {

/// Has assistive technology see job lists and their rows as a list and its items. A list has only
/// the rows that are widgets at the time, in their order. Calls after the first do nothing.
void installAccessibleJobList();

} // namespace kestrel
