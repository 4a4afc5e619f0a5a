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

QImage filled(int width, int height, QColor colour = Qt::darkGreen)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

TEST(LogoImage, AnyReadableImageBecomesAPngOfAtMostSixHundredOnTheLongSide)
{
    const struct {
        const char* format;
        QByteArray bytes;
        QSize out;
    } cases[] = {
        {"JPEG", encoded(filled(4000, 3000), "JPEG"), {600, 450}},
        {"BMP", encoded(filled(1200, 300), "BMP"), {600, 150}},
        {"PNG", encoded(filled(3000, 1), "PNG"), {600, 1}},
        {"PPM, never enlarged", encoded(filled(50, 50), "PPM"), {50, 50}},
        // Qt reads GIF but doesn't write it: the smallest GIF there is, one pixel.
        {"GIF",
         QByteArray::fromHex(
             "47494638396101000100800000000000ffffff21f90401000000002c00000000010001000002024401003b"),
         {1, 1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.format);
        const QByteArray png = LogoImage::normalize(c.bytes);
        EXPECT_TRUE(png.startsWith("\x89PNG"));
        EXPECT_EQ(LogoImage::pngSize(png), c.out);
        EXPECT_EQ(QImage::fromData(png).size(), c.out);
    }
    // Transparency survives.
    QImage clear = filled(800, 400, Qt::transparent);
    clear.setPixelColor(400, 200, Qt::black);
    EXPECT_EQ(qAlpha(QImage::fromData(LogoImage::normalize(encoded(clear, "PNG"))).pixel(5, 5)), 0);
}

TEST(LogoImage, BytesThatArentAnImageAreRefusedInPlainWords)
{
    for (const QByteArray& bytes : {QByteArray(), QByteArray("name,price\nRice,95\n"),
                                    encoded(filled(10, 10), "PNG").left(30)}) {
        try {
            LogoImage::normalize(bytes);
            ADD_FAILURE() << "took " << bytes.size() << " bytes for an image";
        } catch (const LogoImageError& error) {
            EXPECT_EQ(error.description(), QStringLiteral("That file couldn't be read as an image. Choose a PNG, "
                                                          "JPEG, BMP, or GIF file."));
        }
    }
}

TEST(LogoImage, SizeComesFromThePngHeaderAlone)
{
    QByteArray png = encoded(filled(321, 123), "PNG");
    EXPECT_EQ(LogoImage::pngSize(png), QSize(321, 123));
    for (const std::optional<QByteArray>& unsized : {std::optional<QByteArray>(), std::optional(png.left(23)),
                                                     std::optional(encoded(filled(321, 123), "BMP"))})
        EXPECT_FALSE(LogoImage::pngSize(unsized));
    // Only the first four bytes of the signature are looked at.
    QByteArray looseSignature = png;
    looseSignature[5] = 'x';
    EXPECT_EQ(LogoImage::pngSize(looseSignature), QSize(321, 123));
    png[20] = png[21] = png[22] = png[23] = 0;
    EXPECT_FALSE(LogoImage::pngSize(png));
}

} // namespace
