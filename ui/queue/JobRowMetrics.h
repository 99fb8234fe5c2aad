#pragma once

#include <QFont>

namespace kestrel {

/// The heights of job rows, in pixels, for one width and one set of fonts.
struct JobRowMetrics {
    /// Of a whole row.
    int width;
    /// Without a message.
    int plainHeight;
    /// With a message of one line.
    int failedHeight;
    int messageLineHeight;
    int messageWidth;
    QFont messageFont;
};

} // namespace kestrel
