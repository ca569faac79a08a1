#include "ContactSheet.h"

#include "ThemeCatalog.h"

#include "render/QLAWBatteryRenderer.h"
#include "store/ThemeScripts.h"

#include "platform/core/ColorParsing.h"
#include "platform/core/UIGraphics.h"
#include "platform/core/UIScreen.h"

#include <algorithm>

namespace {

struct Variant {
    const char* caption;
    int level;
    bool charging;
    bool low;
    bool lowPower;
};

const Variant kVariants[] = {
    {"5%", 5, false, false, false},   {"20% low", 20, false, true, false}, {"50%", 50, false, false, false},
    {"100%", 100, false, false, false}, {"60% charging", 60, true, false, false}, {"40% low power", 40, false, false, true},
};

struct Background {
    const char* name;
    double white;
    const char* color;
    const char* baseColor;
};

const Background kBackgrounds[] = {
    {"light", 0.95, "#000000", "#00000055"},
    {"dark", 0.15, "#FFFFFF", "#FFFFFF55"},
};

constexpr double kLabelWidth = 150;  // points
constexpr double kCaptionHeight = 22;
constexpr double kPadding = 8;

struct Cell {
    UIImage image;
};

void drawText(cairo_t* cr, const std::string& text, double x, double y, double size, double grey)
{
    cairo_select_font_face(cr, "Liberation Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, size);
    cairo_set_source_rgb(cr, grey, grey, grey);
    cairo_move_to(cr, x, y);
    cairo_show_text(cr, text.c_str());
}

} // namespace

ContactSheet drawContactSheet(const ContactSheetOptions& options)
{
    ContactSheet sheet;
    std::vector<InstalledTheme> themes = installedThemes();
    themes.erase(std::remove_if(themes.begin(), themes.end(), [](const auto& t) { return t.shadowed; }), themes.end());

    // Render first, so that the cells can take the size of the largest picture.
    std::vector<std::vector<UIImage>> rows;
    CGSize cell{};
    for (const InstalledTheme& theme : themes) {
        std::optional<std::string> script = getThemeScriptWithName(theme.name);
        std::vector<UIImage> row;
        for (const Background& background : kBackgrounds)
            for (const Variant& variant : kVariants) {
                PlistDict settings{{"script", script.value_or("")}, {"height", options.heightPoints},
                                   {"level", variant.level}, {"charging", variant.charging},
                                   {"low", variant.low}, {"lpm", variant.lowPower},
                                   {"color", *ColorParsing::colorFromHexStringTD(background.color)},
                                   {"baseColor", *ColorParsing::colorFromHexStringTD(background.baseColor)}};
                std::string failure;
                UIImage image = QLAWBatteryRenderer::renderBatteryImageWithSettingsForStyle(settings, 0, &failure);
                if (image.isNil())
                    sheet.failures.push_back(theme.name + " (" + background.name + ", " + variant.caption + "): " + failure);
                cell.width = std::max(cell.width, image.size().width);
                cell.height = std::max(cell.height, image.size().height);
                row.push_back(image);
            }
        rows.push_back(std::move(row));
    }
    cell.width = std::max(cell.width + 2 * kPadding, 90.0);
    cell.height = std::max(cell.height + 2 * kPadding, 30.0);

    std::size_t columns = std::size(kBackgrounds) * std::size(kVariants);
    CGSize size{kLabelWidth + columns * cell.width, kCaptionHeight + std::max<std::size_t>(rows.size(), 1) * cell.height};
    UIGraphicsImageContext context(size, true, 0);
    cairo_t* cr = context.context();
    if (!cr)
        return sheet;
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_paint(cr);
    for (std::size_t column = 0; column < columns; ++column) {
        const Background& background = kBackgrounds[column / std::size(kVariants)];
        double x = kLabelWidth + column * cell.width;
        cairo_set_source_rgb(cr, background.white, background.white, background.white);
        cairo_rectangle(cr, x, kCaptionHeight, cell.width, size.height - kCaptionHeight);
        cairo_fill(cr);
        drawText(cr, kVariants[column % std::size(kVariants)].caption, x + 4, 15, 10, 0.3);
    }
    for (std::size_t r = 0; r < rows.size(); ++r) {
        double y = kCaptionHeight + r * cell.height;
        drawText(cr, themes[r].name, 8, y + cell.height / 2 + 4, 12, 0.1);
        for (std::size_t column = 0; column < rows[r].size(); ++column) {
            const UIImage& image = rows[r][column];
            CGSize imageSize = image.size();
            double x = kLabelWidth + column * cell.width + (cell.width - imageSize.width) / 2;
            double top = y + (cell.height - imageSize.height) / 2;
            if (image.isNil())
                continue;
            cairo_save(cr);
            cairo_translate(cr, x, top);
            cairo_scale(cr, 1 / image.scale(), 1 / image.scale());
            cairo_set_source_surface(cr, image.CGImage(), 0, 0);
            cairo_paint(cr);
            cairo_restore(cr);
        }
    }
    sheet.picture = context.takeImage();
    return sheet;
}
