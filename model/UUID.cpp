#include "UUID.h"

#include <QUuid>

#include <bit>
#include <cstring>

namespace kestrel {

UUID UUID::random() {
    static_assert(sizeof(QUuid) == 16);
    return UUID(std::bit_cast<std::array<std::uint8_t, 16>>(QUuid::createUuid()));
}

} // namespace kestrel

std::size_t std::hash<kestrel::UUID>::operator()(const kestrel::UUID& id) const noexcept {
    // The bytes are random already: the first word is as good a hash as any.
    std::size_t value = 0;
    std::memcpy(&value, id.bytes().data(), sizeof value);
    return value;
}
