#pragma once

#include "FileURL.h"

#include <system_error>

namespace kestrel {

/// Creates a folder and its missing parents, as std::filesystem::create_directories does. That one
/// fails for a folder dated after 2038 where the C++ library's time_t has 32 bits. Returns no error
/// iff the folder is there.
std::error_code createFolders(const FileURL& folder);

} // namespace kestrel
