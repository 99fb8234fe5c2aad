#pragma once

#include "OpenPanel.h"

#include <string>
#include <vector>

namespace kestrel {

/// Answers at once, and remembers what it was asked.
class ScriptedPanel : public OpenPanel {
  public:
    std::optional<std::vector<FileURL>> answer;
    std::vector<std::string> titles;

    std::optional<std::vector<FileURL>> runModal(const Options& options) override {
        titles.push_back(options.title);
        return answer;
    }
};

} // namespace kestrel
