// FileURL: identities between splitting, joining and standardizing paths. The input is a path, a
// component and an extension, separated by NUL bytes.

#include "FileURL.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Property.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kestrel {

namespace {

bool isOneComponent(std::string_view text) {
    return !text.empty() && text.find('/') == std::string_view::npos;
}

/// Standardizes with a stack of components.
std::string expectedStandard(const std::string& path) {
    std::vector<std::string> components;
    std::string component;
    for (const char c : path + "/") {
        if (c != '/') {
            component += c;
            continue;
        }
        if (component == "..") {
            components.resize(components.empty() ? 0 : components.size() - 1);
        } else if (!component.empty() && component != ".") {
            components.push_back(component);
        }
        component.clear();
    }
    std::string result;
    for (const std::string& each : components) {
        result += "/" + each;
    }
    return result.empty() ? "/" : result;
}

void checkPath(const FileURL& url, const std::string& given) {
    const std::size_t end = given.find_last_not_of('/');
    const std::string expected = end == std::string::npos ? "/" : given.substr(0, end + 1);
    require(url.path() == expected, "a path is kept but for the slashes at its end");
    require(FileURL(url.path()) == url, "a path leads back to its location");
    const FileURL same(given + "//");
    require(same == url, "slashes at the end make no difference");
    require(std::hash<FileURL>()(same) == std::hash<FileURL>()(url), "equals have equal hashes");
}

void checkStandardized(const FileURL& url) {
    const FileURL standard = url.standardized();
    require(standard.path() == expectedStandard(url.path()), "standardizing resolves components");
    require(standard.standardized() == standard, "standardizing twice changes nothing more");
    require(url.isStandardized() == (standard == url), "what is in standard form stays");
    require(url.appendingPathComponent(".").standardized() == standard, "\".\" stays");
    require(url.appendingPathComponent("..").standardized() == standard.deletingLastPathComponent(),
            "\"..\" is the containing folder");
}

void checkLastComponent(const FileURL& url) {
    const std::string last(url.lastPathComponent());
    const FileURL folder = url.deletingLastPathComponent();
    if (url.path() == "/") {
        require(last == "/" && folder == url, "the root is its own folder and component");
    } else {
        require(isOneComponent(last), "the last component is not empty and has no slash");
        const FileURL again = folder.appendingPathComponent(last);
        const bool hasEmptyComponents = url.path().find("//") != std::string::npos;
        require(hasEmptyComponents || again == url, "folder and component make the location");
        require(again.standardized() == url.standardized(), "folder and component name it");
    }
    const std::string extension(url.pathExtension());
    const std::string base(url.baseName());
    require(extension.find_first_of("./") == std::string::npos,
            "an extension is what follows a dot");
    require(base + (extension.empty() ? "" : "." + extension) == last,
            "base name and extension make the last component");
    require(!extension.empty() || last.find('.') == std::string::npos || last.ends_with('.'),
            "what follows the last dot is the extension");
}

void checkAppending(const FileURL& url, const std::string& component,
                    const std::string& extension) {
    const FileURL longer = url.appendingPathComponent(component);
    require(longer.path().starts_with(url.path()), "an appended component is at the end");
    if (isOneComponent(component)) {
        require(longer.lastPathComponent() == component, "an appended component is the last");
        require(longer.deletingLastPathComponent() == url, "the folder is what was appended to");
    } else if (component.empty()) {
        require(longer == url, "an empty component changes nothing");
    }
    const FileURL extended = url.appendingPathExtension(extension);
    if (isOneComponent(extension) && extension.find('.') == std::string::npos) {
        require(extended.pathExtension() == extension, "an appended extension is the extension");
        const std::string_view base = url.path() == "/" ? "" : url.lastPathComponent();
        require(extended.baseName() == base, "the base name is what was appended to");
    }
    require((extended == longer) == (extended.path() == longer.path()), "equal by their bytes");
}

} // namespace

} // namespace kestrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrel;
    std::vector<std::string> parts(1);
    const FuzzInput input(data, size);
    for (const char c : input.bytes()) {
        if (c == '\0') {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    parts.resize(3);
    // FileURL requires an absolute path.
    const std::string path = "/" + parts[0];
    const FileURL url(path);
    checkPath(url, path);
    checkStandardized(url);
    checkLastComponent(url);
    checkAppending(url, parts[1], parts[2]);
    return 0;
}
