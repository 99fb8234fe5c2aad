#include "FileNameOrder.h"

#include <QCollator>
#include <QLocale>
#include <QString>
#include <QUtf8StringView>

#include <algorithm>
#include <string_view>
#include <utility>

namespace kestrel {

namespace {

struct KeyedUrl {
    QCollatorSortKey key;
    FileURL url;
};

/// Fixed locale: the user's would make the order differ between desktops, and in the "C" locale the
/// sort keys of Qt 6.4 to 6.11 compare by code units.
QCollator fileNameCollator() {
    QCollator collator(QLocale(QLocale::English, QLocale::UnitedStates));
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace

void sortByFileName(std::vector<FileURL>& urls) {
    // Opening a collator takes longer than all else that a single file needs.
    if (urls.size() < 2) {
        return;
    }
    const QCollator collator = fileNameCollator();
    std::vector<KeyedUrl> keyed;
    keyed.reserve(urls.size());
    for (FileURL& url : urls) {
        const std::string_view name = url.lastPathComponent();
        const auto length = static_cast<qsizetype>(name.size());
        keyed.push_back({collator.sortKey(QString::fromUtf8(name.data(), length)), std::move(url)});
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const KeyedUrl& a, const KeyedUrl& b) { return a.key.compare(b.key) < 0; });
    std::transform(keyed.begin(), keyed.end(), urls.begin(),
                   [](KeyedUrl& entry) { return std::move(entry.url); });
}

} // namespace kestrel
