#include "QLColorCell.h"

#include "store/PreferencesStore.h"
#include "store/RenderSettings.h"

#include "platform/core/ColorParsing.h"
#include "platform/qt/PSListController.h"
#include "platform/qt/QtConversions.h"
#include "platform/qt/UINavigationController.h"
#include "platform/qt/UIView.h"

#include <QLabel>
#include <QPainter>

namespace {

constexpr QSize kSwatchSize(51, 31);
constexpr double kSwatchBorderWidth = 1.5;

QPointer<PSListController>& colorPageReference()
{
    static QPointer<PSListController> page;
    return page;
}

// A round patch of the colour with a light rim.
class ColourSwatch : public QWidget {
public:
    explicit ColourSwatch(QWidget* parent = nullptr) : QWidget(parent)
    {
        resize(kSwatchSize);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        UIView::setTag(this, QLColorCell::kSwatchTag);
        UIView::setCornerRadius(this, kSwatchSize.height() / 2.0);
    }
    void setColour(std::optional<UIColor> colour)
    {
        colour_ = colour;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        double radius = UIView::cornerRadius(this);
        QRectF area = QRectF(rect()).adjusted(kSwatchBorderWidth / 2, kSwatchBorderWidth / 2, -kSwatchBorderWidth / 2,
                                              -kSwatchBorderWidth / 2);
        painter.setPen(QPen(QColor::fromRgbF(0.85, 0.85, 0.85, 0.9), kSwatchBorderWidth));
        painter.setBrush(colour_ ? QBrush(toQColor(*colour_)) : QBrush(Qt::NoBrush));
        painter.drawRoundedRect(area, radius, radius);
    }

private:
    std::optional<UIColor> colour_;
};

// The stored text of a colour setting; anything that is not text counts as nothing stored.
std::optional<std::string> storedText(const std::optional<PlistDict>& preferences, const std::string& key)
{
    if (!preferences)
        return std::nullopt;
    const PlistValue* value = preferences->find(key);
    const std::string* text = value ? value->asString() : nullptr;
    if (!text || text->empty())
        return std::nullopt;
    return *text;
}

} // namespace

const ObjCClass& QLColorCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<QLColorCell>("QLColorCell", &PSTableCell::staticClass())
                                      .method("updateCellColor", &QLColorCell::updateCellColor)
                                      .method("openColorPicker", &QLColorCell::openColorPicker)
                                      .method("action", &QLColorCell::action)
                                      .method("cellAction", &QLColorCell::cellAction)
                                      .method("target", &QLColorCell::target)
                                      .method("cellTarget", &QLColorCell::cellTarget)
                                      .build();
    return cls;
}

QLColorCell::QLColorCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier)
    : PSTableCell(style, reuseIdentifier, std::move(specifier))
{
}

QLColorCell::~QLColorCell()
{
    // The entry outlives its row; it must not call a row that is gone.
    if (specifier() && specifier()->target() == this)
        specifier()->setTarget(nullptr);
}

PSListController* QLColorCell::colorPage()
{
    return colorPageReference();
}

void QLColorCell::setColorPage(PSListController* page)
{
    colorPageReference() = page;
}

void QLColorCell::didMoveToSuperview()
{
    PSTableCell::didMoveToSuperview();
    auto* swatch = new ColourSwatch();
    colorPreview_ = swatch;
    setAccessoryView(swatch);
    if (specifier()) {
        specifier()->setTarget(this);
        specifier()->setAction("openColorPicker");
    }
    updateCellColor();
}

bool QLColorCell::usesAlpha() const
{
    return specifier() && specifier()->propertyForKey("useAlpha").boolValue();
}

void QLColorCell::updateCellColor()
{
    if (!specifier())
        return;
    const std::string* key = specifier()->propertyForKey("key").string();
    std::optional<std::string> value = key ? storedText(loadPreferences(), *key) : std::nullopt;
    if (!value)
        if (const std::string* fallback = specifier()->propertyForKey("default").string())
            value = *fallback;
    std::optional<UIColor> colour = value ? ColorParsing::colorFromHexStringTD(*value) : std::nullopt;
    keyColor_ = colour;
    showColor(colour);
    detailTextLabel()->setText(value ? QString::fromStdString(*value).toUpper() : QString());
    updateAccessibility();
    layoutSubviews();
}

void QLColorCell::showColor(const std::optional<UIColor>& color)
{
    if (auto* swatch = dynamic_cast<ColourSwatch*>(colorPreview_.data()))
        swatch->setColour(color);
}

void QLColorCell::openColorPicker()
{
    PSListController* page = colorPage();
    std::shared_ptr<PSSpecifier> entry = specifier();
    if (!page || !page->navigationController() || !entry)
        return;
    auto* picker = new QLAWColorPickerViewController(keyColor_.value_or(UIColor::blackColor()), true, usesAlpha());
    picker->setTitle(entry->name());
    picker->setDelegate(this);

    PlistDict settings = getBatteryRenderSettings();
    const std::string* update = entry->propertyForKey("update").string();
    const PlistValue* light = settings.find("lightSettings");
    bool shared = light && light->asDict() && light->asDict()->value("share").boolValue();
    if (update && *update != "MAINANDBASE" && (!shared || *update == "baseColor"))
        picker->setUpdateKey(*update);
    if (const std::string* foreground = entry->propertyForKey("foreUpdate").string())
        picker->setUpdateForegroundKey(*foreground);
    picker->setBatterySettings(settings);
    page->navigationController()->pushViewController(picker, true);
}

void QLColorCell::colorPickerControllerDidFinishPickingWithColor(QLAWColorPickerViewController*, const UIColor& color)
{
    keyColor_ = color;
    showColor(color);
    std::string hex = ColorParsing::hexStringFromColorAlphaHash(color, usesAlpha(), true).value_or("");
    detailTextLabel()->setText(QString::fromStdString(hex).toUpper());
    updateAccessibility();
    layoutSubviews();
    if (PSListController* page = colorPage(); page && specifier() && !hex.empty())
        page->performSelector("setPreferenceValue:specifier:", {Id(hex), specifier()});
}

QString QLColorCell::accessibleValue() const
{
    return detailTextLabel()->text();
}
