#pragma once

#include "FileViewer.h"
#include "OpenPanel.h"

#include <optional>
#include <vector>

namespace kestrel::test {

/// An open panel that returns `answer` immediately.
class ScriptedOpenPanel final : public OpenPanel {
  public:
    std::optional<std::vector<FileURL>> runModal(const Options& options) override {
        shown.push_back(options);
        return answer;
    }

    std::vector<Options> shown;
    std::optional<std::vector<FileURL>> answer;
};

/// A file viewer that records what it reveals.
class ScriptedFileViewer final : public FileViewer {
  public:
    void reveal(const FileURL& url) override { revealed.push_back(url); }

    std::vector<FileURL> revealed;
};

} // namespace kestrel::test
