#include "FontConfiguration.h"

#include <fontconfig/fontconfig.h>

#include <system_error>

namespace kestrel {

std::jthread readFontConfiguration() {
    try {
        return std::jthread([] { FcInit(); });
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace kestrel
