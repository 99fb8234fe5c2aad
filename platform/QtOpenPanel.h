#pragma once

#include "FileURL.h"
#include "OpenPanel.h"

#include <optional>
#include <vector>

namespace kestrel {

/// Shows Qt's own file dialog, starting in the folder given or the nearest one above it
/// that the dialog can show, and returns when the user is done: what was chosen, or none when the
/// dialog was dismissed. Entries whose names are not UTF-8 are not in the dialog. The dialog's
/// history is neither read nor written: from the first call on, this process stores no settings of
/// Qt. Main thread; runs the event loop meanwhile.
std::optional<std::vector<FileURL>> runQtOpenPanel(const OpenPanel::Options& options,
                                                   const FileURL& startFolder);

} // namespace kestrel
