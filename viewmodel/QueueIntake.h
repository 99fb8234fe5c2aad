#pragma once

#include "ConversionJob.h"
#include "FileURL.h"

#include <vector>

namespace kestrel {

/// The files to queue when the user gives these files and folders: folders replaced by the accepted
/// files below them, what is queued already left out, the rest sorted by file name. What is
/// accepted goes by the extension alone, in upper or lower case; a file need not exist. One given
/// twice in one call is there twice.
std::vector<FileURL> filesToQueue(const std::vector<FileURL>& urls,
                                  const std::vector<ConversionJob>& queue);

} // namespace kestrel
