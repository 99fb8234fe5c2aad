// sortByFileName(): a stable sort by a strict weak ordering, which ignores case and leading zeros
// and compares numbers by value.

#include "FileNameOrder.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Property.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

namespace {

constexpr std::size_t mostNames = 5;
constexpr std::size_t longestName = 255;

using Names = std::vector<std::string>;

/// The lines, as valid file names.
Names namesIn(std::string_view text) {
    Names names;
    while (!text.empty() && names.size() < mostNames) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string name(text.substr(0, std::min(end, longestName)));
        std::erase(name, '\0');
        std::replace(name.begin(), name.end(), '/', '_');
        if (!name.empty()) {
            names.push_back(std::move(name));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return names;
}

/// The original indices of the sorted names; each name is in a folder named after its index.
std::vector<std::size_t> sortedIndices(const Names& names) {
    std::vector<FileURL> urls;
    for (std::size_t i = 0; i < names.size(); ++i) {
        urls.emplace_back("/" + std::to_string(i) + "/" + names[i]);
    }
    sortByFileName(urls);
    require(urls.size() == names.size(), "sorting neither adds nor drops names");
    std::vector<std::size_t> indices;
    for (const FileURL& url : urls) {
        indices.push_back(std::stoul(url.path().substr(1)));
        require(url.lastPathComponent() == names.at(indices.back()), "names stay as they are");
    }
    return indices;
}

/// The sort is stable, so the second name comes first only if it is less.
bool isLess(const std::string& a, const std::string& b) {
    return sortedIndices({b, a}).front() == 1;
}

bool areEquivalent(const std::string& a, const std::string& b) {
    return !isLess(a, b) && !isLess(b, a);
}

/// The result of isLess() for every pair of names.
class Relation {
  public:
    explicit Relation(const Names& names) : isLess_(names.size()) {
        for (std::size_t a = 0; a < names.size(); ++a) {
            for (const std::string& b : names) {
                isLess_[a].push_back(isLess(names[a], b));
            }
        }
    }

    bool less(std::size_t a, std::size_t b) const { return isLess_[a][b]; }

    bool equivalent(std::size_t a, std::size_t b) const { return !less(a, b) && !less(b, a); }

  private:
    std::vector<std::vector<bool>> isLess_;
};

void checkWeakOrder(const Relation& order, std::size_t count) {
    for (std::size_t a = 0; a < count; ++a) {
        require(!order.less(a, a), "no name is less than itself");
        for (std::size_t b = 0; b < count; ++b) {
            require(!(order.less(a, b) && order.less(b, a)), "less holds in one direction");
            for (std::size_t c = 0; c < count; ++c) {
                require(!(order.less(a, b) && order.less(b, c)) || order.less(a, c),
                        "less is transitive");
                require(!(order.equivalent(a, b) && order.equivalent(b, c)) ||
                            order.equivalent(a, c),
                        "equivalence is transitive");
            }
        }
    }
}

void checkSorted(const Relation& order, const std::vector<std::size_t>& indices) {
    for (std::size_t i = 0; i < indices.size(); ++i) {
        for (std::size_t j = i + 1; j < indices.size(); ++j) {
            require(!order.less(indices[j], indices[i]),
                    "no name comes after one that it is less than");
            require(order.less(indices[i], indices[j]) || indices[i] < indices[j],
                    "equal names keep their order, and each name comes once");
        }
    }
}

std::string inUpperCase(std::string name) {
    for (char& c : name) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return name;
}

/// The digits of the name without leading zeros.
std::string significantDigits(const std::string& name) {
    std::string digits;
    std::copy_if(name.begin(), name.end(), std::back_inserter(digits),
                 [](char c) { return c >= '0' && c <= '9'; });
    return digits.erase(0, digits.find_first_not_of('0'));
}

void checkNumbers(const std::string& first, const std::string& second) {
    // The collation splits longer numbers.
    constexpr std::size_t mostDigits = 200;
    const std::string a = significantDigits(first);
    const std::string b = significantDigits(second);
    if (a.empty() || b.empty() || std::max(a.size(), b.size()) > mostDigits) {
        return;
    }
    const bool isSmaller = a.size() != b.size() ? a.size() < b.size() : a < b;
    require(isLess("a" + a + ".opus", "a" + b + ".opus") == isSmaller,
            "numbers are ordered by their value");
    require(areEquivalent("a" + a + ".opus", "a00" + a + ".opus"), "leading zeros do not count");
}

} // namespace

} // namespace kestrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrel;
    const Names names = namesIn(FuzzInput(data, size).bytes());
    const Relation order(names);
    checkWeakOrder(order, names.size());
    checkSorted(order, sortedIndices(names));
    if (!names.empty()) {
        require(areEquivalent(names.front(), inUpperCase(names.front())), "case does not count");
        checkNumbers(names.front(), names.back());
    }
    return 0;
}
