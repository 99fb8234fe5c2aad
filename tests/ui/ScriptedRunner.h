#pragma once

#include "ConversionRunner.h"

#include <atomic>
#include <functional>
#include <map>
#include <string>

namespace kestrel {

/// Converts nothing: does what the script for the source's file name says, and without one
/// succeeds.
class ScriptedRunner : public ConversionRunner {
  public:
    using Script = std::function<void(const ProgressHandler&)>;

    /// By file name; write it while no batch runs.
    std::map<std::string, Script, std::less<>> scripts;
    std::atomic<int> interruptions = 0;

    void convert(const FileURL& source, const FileURL&, const ConversionSettings&,
                 const ProgressHandler& onProgress) override {
        const auto script = scripts.find(source.lastPathComponent());
        if (script != scripts.end()) {
            script->second(onProgress);
        }
    }

    void interruptActiveProcess() override { ++interruptions; }
};

} // namespace kestrel
