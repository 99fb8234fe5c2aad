#pragma once

#include <QFont>

namespace kestrel {

/// The heights of job rows, in pixels, for one width and one set of fonts.
struct JobRowMetrics {
    /// Of a whole row.
    int width = 0;
    /// Without a message.
    int plainHeight = 0;
    /// With a message of one line.
    int failedHeight = 0;
    int messageLineHeight = 0;
    int messageWidth = 0;
    QFont messageFont;
};

} // namespace kestrel
