#include "resources/BundleResources.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSet>

#include <gtest/gtest.h>

using ampwell::resources::bundleRoot;

namespace {

enum class Kind {
    Template,   // one shape, recoloured at run time by its alpha
    FullColour, // shown as drawn
    Opaque,     // fills its whole frame
};

struct Picture {
    const char* name;
    int width;  // points
    int height; // points
    Kind kind;
};

// The pictures the pages load by name, with the size each is laid out at.
const Picture pictures[] = {
    {"ampwellHeader", 375, 125, Kind::Opaque},
    {"heart", 22, 20, Kind::Template},
    {"enabled", 29, 29, Kind::Template},
    {"settings", 29, 29, Kind::Template},
    {"makers", 29, 29, Kind::Template},
    {"support", 29, 29, Kind::Template},
    {"mossgateLogoSmall", 120, 30, Kind::Template},
    {"MossgateLarge", 65, 65, Kind::FullColour},
    {"Twitter", 24, 24, Kind::FullColour},
};

QString fileName(const QString& name, int scale)
{
    return scale == 1 ? name + QStringLiteral(".png") : QStringLiteral("%1@%2x.png").arg(name).arg(scale);
}

QImage load(const QString& name, int scale)
{
    return QImage(bundleRoot() + u'/' + fileName(name, scale)).convertToFormat(QImage::Format_ARGB32);
}

struct AlphaCount {
    qsizetype clear = 0;
    qsizetype solid = 0;
};

AlphaCount countAlpha(const QImage& image)
{
    AlphaCount count;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            count.clear += alpha == 0;
            count.solid += alpha == 255;
        }
    }
    return count;
}

QSet<QRgb> opaqueColours(const QImage& image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) == 255)
                colours.insert(image.pixel(x, y) & 0xF0F0F0); // ignore anti-aliasing shades
    return colours;
}

} // namespace

TEST(BundleImages, EveryPictureComesAtThreeScalesWithItsLayoutSize)
{
    for (const Picture& picture : pictures) {
        for (int scale = 1; scale <= 3; ++scale) {
            const QImage image = load(QString::fromUtf8(picture.name), scale);
            ASSERT_FALSE(image.isNull()) << fileName(QString::fromUtf8(picture.name), scale).toStdString();
            EXPECT_EQ(image.width(), picture.width * scale) << picture.name << " @" << scale;
            EXPECT_EQ(image.height(), picture.height * scale) << picture.name << " @" << scale;
        }
    }
}

TEST(BundleImages, NoPictureLacksAScale)
{
    const QStringList files = QDir(bundleRoot()).entryList({QStringLiteral("*.png")}, QDir::Files);
    EXPECT_EQ(files.size(), std::size(pictures) * 3);
    for (const QString& file : files) {
        QString name = file.chopped(4);
        if (name.endsWith(QStringLiteral("@2x")) || name.endsWith(QStringLiteral("@3x")))
            name.chop(3);
        for (int scale = 1; scale <= 3; ++scale)
            EXPECT_TRUE(files.contains(fileName(name, scale))) << fileName(name, scale).toStdString();
    }
}

TEST(BundleImages, TemplatesAreShapesOnAClearGround)
{
    // Recolouring keeps only the alpha: a template with an opaque ground would turn into a
    // solid block, one drawn too faintly would vanish.
    for (const Picture& picture : pictures) {
        if (picture.kind != Kind::Template)
            continue;
        for (int scale = 1; scale <= 3; ++scale) {
            const QImage image = load(QString::fromUtf8(picture.name), scale);
            const AlphaCount alpha = countAlpha(image);
            const qsizetype all = qsizetype(image.width()) * image.height();
            EXPECT_GT(alpha.clear, all / 20) << picture.name << " @" << scale;
            EXPECT_GT(alpha.solid, all / 20) << picture.name << " @" << scale;
        }
    }
}

TEST(BundleImages, TheHeaderFillsItsFrameAtAWideAspect)
{
    for (int scale = 1; scale <= 3; ++scale) {
        const QImage header = load(QStringLiteral("ampwellHeader"), scale);
        const qsizetype all = qsizetype(header.width()) * header.height();
        EXPECT_EQ(countAlpha(header).solid, all) << "@" << scale;
        EXPECT_GE(double(header.width()) / header.height(), 3.0);
    }
}

TEST(BundleImages, ColourPicturesAreRoundAndColourful)
{
    for (const Picture& picture : pictures) {
        if (picture.kind != Kind::FullColour)
            continue;
        const QImage image = load(QString::fromUtf8(picture.name), 3);
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << picture.name;
        EXPECT_EQ(qAlpha(image.pixel(image.width() - 1, 0)), 0) << picture.name;
        EXPECT_EQ(qAlpha(image.pixel(image.width() / 2, image.height() / 2)), 255) << picture.name;
        EXPECT_GE(opaqueColours(image).size(), 3) << picture.name;
    }
}
