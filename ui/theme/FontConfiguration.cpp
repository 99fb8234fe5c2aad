#include "FontConfiguration.h"

#include <fontconfig/fontconfig.h>

#include <QHash>

#include <memory>
#include <system_error>

namespace kestrel {
namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;

QString bestMatch(const QString& family) {
    const QByteArray name = family.toUtf8();
    const Pattern wanted(
        FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, name.constData(), nullptr),
        &FcPatternDestroy);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result), &FcPatternDestroy);
    FcChar8* installed = nullptr;
    if (!found || FcPatternGetString(found.get(), FC_FAMILY, 0, &installed) != FcResultMatch) {
        return family;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): UTF-8, unsigned
    return QString::fromUtf8(reinterpret_cast<const char*>(installed));
}

} // namespace

std::jthread readFontConfiguration() {
    try {
        return std::jthread([] {
            FcInit();
            // Qt's default families without a platform theme.
            installedFontFamily(QStringLiteral("Sans Serif"));
            installedFontFamily(QStringLiteral("monospace"));
        });
    } catch (const std::system_error&) {
        return {};
    }
}

QString installedFontFamily(const QString& family) {
    static QHash<QString, QString> families;
    const auto known = families.constFind(family);
    return known != families.cend() ? *known : *families.insert(family, bestMatch(family));
}

} // namespace kestrel
