#pragma once

#include "FileURL.h"
#include "OpenPanel.h"

#include <optional>
#include <vector>

namespace kestrel {

/// Shows Qt's own file dialog in a nested event loop, in `startFolder` or its nearest ancestor that
/// the dialog can show. Returns what was chosen, or none if the dialog was dismissed. Entries whose
/// names are not UTF-8 are not listed. From the first call on, this process stores no user
/// QSettings, so the dialog's history is neither read nor written. Main thread.
std::optional<std::vector<FileURL>> runQtOpenPanel(const OpenPanel::Options& options,
                                                   const FileURL& startFolder);

} // namespace kestrel
