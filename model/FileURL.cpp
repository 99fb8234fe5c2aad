#include "FileURL.h"

#include "FatalError.h"

#include <utility>

namespace kestrel {

namespace {

/// Returns true iff the path has an empty, "." or ".." component, which `standardized` resolves.
bool hasComponentToResolve(std::string_view path) {
    for (std::size_t slash = 0; slash != std::string_view::npos;) {
        const std::size_t next = path.find('/', slash + 1);
        const std::string_view component = path.substr(slash + 1, next - slash - 1);
        if (component.empty() || component == "." || component == "..") {
            return true;
        }
        slash = next;
    }
    return false;
}

} // namespace

FileURL::FileURL(std::string path) : path_(std::move(path)) {
    if (path_.empty() || path_.front() != '/' || path_.find('\0') != std::string::npos) {
        fatalError("A file URL needs an absolute path without NUL bytes");
    }
    while (path_.size() > 1 && path_.back() == '/') {
        path_.pop_back();
    }
}

std::string_view FileURL::lastPathComponent() const noexcept {
    const std::string_view path = path_;
    return path.size() == 1 ? path : path.substr(path.rfind('/') + 1);
}

std::string_view FileURL::pathExtension() const noexcept {
    const std::string_view name = lastPathComponent();
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

std::string_view FileURL::baseName() const noexcept {
    const std::string_view name = lastPathComponent();
    const std::string_view extension = pathExtension();
    return extension.empty() ? name : name.substr(0, name.size() - extension.size() - 1);
}

FileURL FileURL::deletingLastPathComponent() const {
    const std::size_t slash = path_.rfind('/');
    return FileURL(slash == 0 ? "/" : path_.substr(0, slash));
}

FileURL FileURL::appendingPathComponent(std::string_view component) const {
    std::string path = path_;
    if (path.back() != '/') {
        path += '/';
    }
    path += component;
    return FileURL(std::move(path));
}

FileURL FileURL::appendingPathExtension(std::string_view extension) const {
    std::string path = path_;
    path += '.';
    path += extension;
    return FileURL(std::move(path));
}

bool FileURL::isStandardized() const noexcept {
    return path_.size() == 1 || !hasComponentToResolve(path_);
}

FileURL FileURL::standardized() const {
    const std::string_view path = path_;
    if (isStandardized()) {
        return *this;
    }
    std::string result;
    result.reserve(path.size());
    for (std::size_t slash = 0; slash != std::string_view::npos;) {
        const std::size_t next = path.find('/', slash + 1);
        const std::string_view component = path.substr(slash + 1, next - slash - 1);
        if (component == "..") {
            result.resize(result.empty() ? 0 : result.rfind('/'));
        } else if (!component.empty() && component != ".") {
            result += '/';
            result += component;
        }
        slash = next;
    }
    return FileURL(result.empty() ? "/" : std::move(result));
}

} // namespace kestrel
