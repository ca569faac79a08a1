#include "QtConversions.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

int channel(double value)
{
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

} // namespace

QColor toQColor(const UIColor& color)
{
    return QColor(channel(color.red()), channel(color.green()), channel(color.blue()), channel(color.alpha()));
}

UIColor toUIColor(const QColor& color)
{
    return UIColor::colorWithRedGreenBlueAlpha(color.redF(), color.greenF(), color.blueF(), color.alphaF());
}

QImage toQImage(const UIImage& image)
{
    cairo_surface_t* surface = image.CGImage();
    if (!surface)
        return QImage();
    cairo_surface_flush(surface);
    int width = cairo_image_surface_get_width(surface);
    int height = cairo_image_surface_get_height(surface);
    int stride = cairo_image_surface_get_stride(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    if (!data || width <= 0 || height <= 0)
        return QImage();
    // Cairo's ARGB32 and Qt's premultiplied ARGB32 are the same native-endian words.
    QImage copy(data, width, height, stride, QImage::Format_ARGB32_Premultiplied);
    QImage result = copy.copy();
    result.setDevicePixelRatio(image.scale());
    return result;
}

QPixmap toQPixmap(const UIImage& image)
{
    QImage converted = toQImage(image);
    return converted.isNull() ? QPixmap() : QPixmap::fromImage(converted);
}

UIImage toUIImage(const QImage& image)
{
    if (image.isNull())
        return UIImage();
    QImage source = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, source.width(), source.height());
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) {
        cairo_surface_destroy(surface);
        return UIImage();
    }
    cairo_surface_flush(surface);
    unsigned char* data = cairo_image_surface_get_data(surface);
    int stride = cairo_image_surface_get_stride(surface);
    for (int y = 0; y < source.height(); ++y)
        std::memcpy(data + static_cast<std::ptrdiff_t>(y) * stride, source.constScanLine(y),
                    static_cast<std::size_t>(source.width()) * 4);
    cairo_surface_mark_dirty(surface);
    return UIImage(surface, source.devicePixelRatio());
}
