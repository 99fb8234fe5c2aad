#include "PortalFilter.h"

#include <QDBusMetaType>

namespace kestrel {

QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter::Pattern& pattern) {
    argument.beginStructure();
    argument << pattern.kind << pattern.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter::Pattern& pattern) {
    argument.beginStructure();
    argument >> pattern.kind >> pattern.text;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter& filter) {
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter& filter) {
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument;
}

void registerPortalFilter() {
    qDBusRegisterMetaType<PortalFilter::Pattern>();
    qDBusRegisterMetaType<QList<PortalFilter::Pattern>>();
    qDBusRegisterMetaType<PortalFilter>();
    qDBusRegisterMetaType<QList<PortalFilter>>();
}

} // namespace kestrel
