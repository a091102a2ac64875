#pragma once

#include <QSize>
#include <QString>

#include <functional>

class QPainter;

/// Writes the images.
namespace sheet {

/// Draws an image at the scales 1 and 2 and writes it to "name.png" and "name@2x.png" in `folder`.
/// `draw` works in pixels of `size` at both scales. Returns false if a file cannot be written.
bool write(
    const QString &folder, const QString &name, QSize size,
    const std::function<void(QPainter &)> &draw);

} // namespace sheet
