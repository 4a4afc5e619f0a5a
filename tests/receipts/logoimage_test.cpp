#include "receipts/logoimage.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

namespace {

QByteArray encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

TEST(LogoImage, BecomesAPngOfAtMostSixHundredOnTheLongSideAndNonImagesAreRefused)
{
    QImage clear(800, 400, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    const QImage small = clear.scaled(50, 1);
    for (const auto& [bytes, size] : {std::pair{encoded(clear, "JPEG"), QSize(600, 300)},
                                      std::pair{encoded(clear.scaled(300, 1200), "BMP"), QSize(150, 600)},
                                      std::pair{encoded(small, "PNG"), QSize(50, 1)}}) { // never enlarged
        const QByteArray png = LogoImage::normalize(bytes);
        EXPECT_TRUE(png.startsWith("\x89PNG"));
        EXPECT_EQ(LogoImage::pngSize(png), size);
    }
    EXPECT_EQ(qAlpha(QImage::fromData(LogoImage::normalize(encoded(clear, "PNG"))).pixel(5, 5)), 0)
        << "transparency survives";

    for (const QByteArray& bytes : {QByteArray("name,price\nRice,95\n"), encoded(small, "PNG").left(30)}) {
        try {
            LogoImage::normalize(bytes);
            ADD_FAILURE() << "took " << bytes.size() << " bytes for an image";
        } catch (const LogoImageError& error) {
            EXPECT_EQ(error.description(), QStringLiteral("That file couldn't be read as an image. Choose a PNG, "
                                                          "JPEG, BMP, or GIF file."));
        }
    }
}

} // namespace
