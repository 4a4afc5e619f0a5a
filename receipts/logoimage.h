#pragma once

#include "refusal/refusal.h"

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <optional>

class LogoImageError : public Refusal {
public:
    LogoImageError()
        : Refusal(QStringLiteral("That file couldn't be read as an image. Choose a PNG, JPEG, BMP, or GIF file."))
    {
    }
};

// The one form a receipt keeps its logo in: a PNG no larger than 600 pixels on its long side.
class LogoImage {
public:
    static constexpr int longestSide = 600;

    // Any image the platform decodes, shrunk (never enlarged) and encoded as PNG with its
    // transparency; throws LogoImageError when the bytes aren't an image.
    static QByteArray normalize(const QByteArray& bytes);
    // The size from the PNG header alone, without decoding.
    static std::optional<QSize> pngSize(const std::optional<QByteArray>& bytes);
    // The bitmap of a stored logo; null when it doesn't decode. The last one is kept, since every
    // receipt of a store shows the same logo.
    static QImage decoded(const QByteArray& png);
};
