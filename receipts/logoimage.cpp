#include "receipts/logoimage.h"

#include "money/rounding.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>

#include <algorithm>

QByteArray LogoImage::normalize(const QByteArray& bytes)
{
    QImage image = QImage::fromData(bytes);
    if (image.isNull() || image.width() < 1 || image.height() < 1)
        throw LogoImageError();
    const double scale = std::min(double(longestSide) / std::max(image.width(), image.height()), 1.0);
    const QSize size(std::max(1, int(Rounding::toPlaces(image.width() * scale, 0))),
                     std::max(1, int(Rounding::toPlaces(image.height() * scale, 0))));

    QImage bitmap(size, QImage::Format_ARGB32);
    if (bitmap.isNull())
        throw LogoImageError();
    bitmap.fill(Qt::transparent);
    {
        QPainter painter(&bitmap);
        if (!painter.isActive())
            throw LogoImageError();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRect(QPoint(0, 0), size), image);
    }

    QByteArray png;
    QBuffer buffer(&png);
    if (!buffer.open(QIODevice::WriteOnly) || !bitmap.save(&buffer, "PNG"))
        throw LogoImageError();
    return png;
}

std::optional<QSize> LogoImage::pngSize(const std::optional<QByteArray>& bytes)
{
    if (!bytes || bytes->size() < 24)
        return std::nullopt;
    const auto* data = reinterpret_cast<const uchar*>(bytes->constData());
    if (data[0] != 137 || data[1] != 'P' || data[2] != 'N' || data[3] != 'G')
        return std::nullopt;
    const quint32 width = qFromBigEndian<quint32>(data + 16);
    const quint32 height = qFromBigEndian<quint32>(data + 20);
    if (width == 0 || height == 0 || width > quint32(INT_MAX) || height > quint32(INT_MAX))
        return std::nullopt;
    return QSize(int(width), int(height));
}

QImage LogoImage::decoded(const QByteArray& png)
{
    static QByteArray lastBytes;
    static QImage lastImage;
    if (png.isSharedWith(lastBytes) || png == lastBytes)
        return lastImage;
    lastBytes = png;
    lastImage = QImage::fromData(png);
    return lastImage;
}
