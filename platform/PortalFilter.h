#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>

namespace kestrel {

/// A file filter of the file chooser portal: D-Bus type (sa(us)).
struct PortalFilter {
    struct Pattern {
        enum Kind : unsigned { Glob = 0 };

        unsigned kind = Glob;
        QString text;
    };

    QString name;
    QList<Pattern> patterns;
};

QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter::Pattern& pattern);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter::Pattern& pattern);
QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter& filter);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter& filter);

/// Registers PortalFilter, and lists of it, with Qt's D-Bus type system; required before either is
/// sent. Thread-safe.
void registerPortalFilter();

} // namespace kestrel

Q_DECLARE_METATYPE(kestrel::PortalFilter::Pattern)
Q_DECLARE_METATYPE(kestrel::PortalFilter)
