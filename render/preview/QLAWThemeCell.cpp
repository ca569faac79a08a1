#include "QLAWThemeCell.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/core/SystemLog.h"
#include "platform/core/UIColor.h"

#include <QLabel>

namespace FA = FrameAdditions;

namespace {

constexpr CGRect kPreviewFrame = {{0, 0}, {110, 44}};
constexpr double kPreviewsBelowCentre = 14.0;
constexpr double kGapFromMiddle = 18.0;
constexpr double kTitleTop = -22.0;

} // namespace

const ObjCClass& QLAWThemeCell::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<QLAWThemeCell>("QLAWThemeCell", &PSTableCell::staticClass())
                                      .method("saveTheme", &QLAWThemeCell::saveTheme)
                                      .method("action", &QLAWThemeCell::action)
                                      .method("cellAction", &QLAWThemeCell::cellAction)
                                      .method("target", &QLAWThemeCell::target)
                                      .method("cellTarget", &QLAWThemeCell::cellTarget)
                                      .method("updateBatteryViewsWithSettings:",
                                              &QLAWThemeCell::updateBatteryViewsWithSettings)
                                      .build();
    return cls;
}

QLAWThemeCell::QLAWThemeCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier)
    : PSTableCell(style, reuseIdentifier, std::move(specifier))
{
    if (this->specifier())
        if (const std::string* script = this->specifier()->propertyForKey("script_key").string())
            script_ = *script;
    dynamicPreview_ = new QLAWBatteryPreView(kPreviewFrame, this);
    defaultPreview_ = new QLAWBatteryPreView(kPreviewFrame, this);
    updateBatteryViewsWithSettings(Id());
}

QLAWThemeCell::~QLAWThemeCell()
{
    // The entry outlives its row; it must not call a row that is gone.
    if (specifier() && specifier()->target() == this)
        specifier()->setTarget(nullptr);
}

void QLAWThemeCell::updateBatteryViewsWithSettings(Id)
{
    PlistDict sample{{"height", 26},
                     {"level", 55},
                     {"charging", false},
                     {"low", false},
                     {"lpm", false},
                     {"color", UIColor::whiteColor()},
                     {"baseColor", UIColor::blackColor()},
                     {"script", script_}};
    settings_ = std::make_shared<PlistDict>(sample);
    defaultPreview_->setBatterySettings(std::make_shared<PlistDict>(*settings_));
    defaultPreview_->refreshBattery();
}

void QLAWThemeCell::didMoveToSuperview()
{
    PSTableCell::didMoveToSuperview();
    auto* nothing = new QWidget();
    nothing->resize(0, 0);
    setAccessoryView(nothing);
    if (specifier()) {
        specifier()->setTarget(this);
        specifier()->setAction("saveTheme");
    }
}

void QLAWThemeCell::saveTheme()
{
    systemLog("AMPW: save theme file");
}

void QLAWThemeCell::layoutSubviews()
{
    PSTableCell::layoutSubviews();
    double width = this->width();
    double height = this->height();
    for (QLAWBatteryPreView* preview : {dynamicPreview_, defaultPreview_}) {
        FA::apply(preview, FA::setCenterX, 0.0);
        FA::apply(preview, FA::setCenterY, height / 2 + kPreviewsBelowCentre);
    }
    FA::apply(dynamicPreview_, FA::setRightM, width / 2 - kGapFromMiddle);
    FA::apply(defaultPreview_, FA::setLeftM, width / 2 + kGapFromMiddle);
    FA::apply(static_cast<QWidget*>(textLabel()), FA::setTopM, kTitleTop);
    if (accessoryView())
        setAccessoryView(nullptr);
}
