#pragma once

#include "FileURL.h"

#include <string_view>
#include <vector>

namespace kestrel {

/// Everything below a folder, files and folders alike, to any depth. Entries whose name starts with
/// a dot are left out with all they hold; packages are listed but not entered; symbolic links are
/// listed but not followed, except that the folder given may be one. A subfolder that cannot be
/// read is listed and contributes nothing else; a folder that cannot be read yields an empty list.
///
/// The order is the same for the same tree: depth first, each folder's entries by the bytes of
/// their names. Any thread.
std::vector<FileURL> listFolder(const FileURL& folder);

/// Whether a folder of this name is a package: a folder that its users take for one file, such as
/// an application bundle. The name's extension decides, in upper or lower case.
bool isPackageName(std::string_view name);

} // namespace kestrel
