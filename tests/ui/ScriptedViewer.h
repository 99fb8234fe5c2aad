#pragma once

#include "FileViewer.h"

#include <vector>

namespace kestrel {

/// Remembers what it was to reveal.
class ScriptedViewer : public FileViewer {
  public:
    std::vector<FileURL> revealed;

    void reveal(const FileURL& url) override { revealed.push_back(url); }
};

} // namespace kestrel
