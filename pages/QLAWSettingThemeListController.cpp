#include "QLAWSettingThemeListController.h"

#include "QLAWSettingsController.h"

#include "render/preview/QLAWBatteryPreView.h"
#include "store/PreferencesStore.h"
#include "store/RenderSettings.h"
#include "store/ThemeScripts.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/UIGraphics.h"
#include "platform/qt/NSBundle.h"
#include "platform/qt/PSTableCell.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UIView.h"

#include <QLabel>

namespace FA = FrameAdditions;

namespace {

constexpr CGSize kReservedImageSize = {110, 40};
constexpr CGRect kPreviewFrame = {{0, 0}, {110, 40}};
constexpr double kPreviewLeft = 18.0;

SharedRenderSettings styleWithScript(const PlistDict& settings, const char* style,
                                     const std::optional<std::string>& script)
{
    const PlistValue* stored = settings.find(style);
    auto styleSettings = std::make_shared<PlistDict>(stored && stored->asDict() ? *stored->asDict() : PlistDict());
    if (script)
        styleSettings->set("script", *script);
    else
        styleSettings->remove("script");
    return styleSettings;
}

} // namespace

const ObjCClass& QLAWSettingThemeListController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingThemeListController>("QLAWSettingThemeListController",
                                                     &PKListItemsController::staticClass())
            .method("localizedString:", &QLAWSettingThemeListController::localizedString)
            .method("navigationTintColor", &QLAWSettingThemeListController::navigationTintColor)
            .build();
    return cls;
}

const ObjCClass& QLAWSettingSecondaryThemeListController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingSecondaryThemeListController>("QLAWSettingSecondaryThemeListController",
                                                              &QLAWSettingThemeListController::staticClass())
            .build();
    return cls;
}

QLAWSettingThemeListController::QLAWSettingThemeListController()
{
    useSecondarySettings = false;
}

QLAWSettingSecondaryThemeListController::QLAWSettingSecondaryThemeListController()
{
    useSecondarySettings = true;
}

std::string QLAWSettingThemeListController::localizedString(const std::string& key)
{
    std::string translated = bundle().localizedStringForKey(key, key);
    return translated.empty() ? key : translated;
}

UIColor QLAWSettingThemeListController::navigationTintColor()
{
    return QLAWSettingsController::tintColour();
}

void QLAWSettingThemeListController::loadView()
{
    PKListItemsController::loadView();
    im_ = imageWithColorSize(UIColor::clearColor(), kReservedImageSize);
}

UIImage QLAWSettingThemeListController::imageWithColorSize(const UIColor& color, CGSize size)
{
    UIGraphicsImageContext context(size, false, 1.0);
    if (cairo_t* cr = context.context()) {
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        cairo_set_source_rgba(cr, color.red(), color.green(), color.blue(), color.alpha());
        cairo_rectangle(cr, 0, 0, size.width, size.height);
        cairo_fill(cr);
    }
    return context.takeImage();
}

QLAWBatteryPreView* QLAWSettingThemeListController::previewOfCell(PSTableCell* cell)
{
    for (QObject* child : cell->contentView()->children())
        if (auto* view = qobject_cast<QLAWBatteryPreView*>(child); view && UIView::tag(view) == kPreviewTag)
            return view;
    return nullptr;
}

PSTableCell* QLAWSettingThemeListController::tableViewCellForRowAtIndexPath(UITableView* table, NSIndexPath indexPath)
{
    PSTableCell* cell = PKListItemsController::tableViewCellForRowAtIndexPath(table, indexPath);
    if (!cell)
        return nullptr;
    cell->imageView()->setImage(im_);
    cell->imageView()->show();
    if (!previewOfCell(cell)) {
        auto* preview = new QLAWBatteryPreView(kPreviewFrame, cell->contentView());
        UIView::setTag(preview, kPreviewTag);
        fillPreview(preview, cell->textLabel()->text().toStdString());
    }
    placePreview(cell);
    return cell;
}

void QLAWSettingThemeListController::fillPreview(QLAWBatteryPreView* preview, const std::string& theme)
{
    std::optional<std::string> script = getThemeScriptWithName(theme);
    PlistDict settings = getBatteryRenderSettings();
    preview->setLightSettings(styleWithScript(settings, "lightSettings", script));
    preview->setDarkSettings(styleWithScript(settings, "darkSettings", script));
    preview->setBatteryImageHeight(kPreviewBatteryHeight);
    preview->refreshBattery();
}

void QLAWSettingThemeListController::placePreview(PSTableCell* cell)
{
    if (QLAWBatteryPreView* preview = previewOfCell(cell)) {
        FA::apply(static_cast<QWidget*>(preview), FA::setLeftM, kPreviewLeft);
        FA::apply(static_cast<QWidget*>(preview), FA::setCenterY, cell->height() / 2.0);
    }
}

void QLAWSettingThemeListController::tableViewWillDisplayCell(UITableView*, PSTableCell* cell, NSIndexPath)
{
    placePreview(cell);
}

void QLAWSettingThemeListController::tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath)
{
    PKListItemsController::tableViewDidSelectRowAtIndexPath(table, indexPath);
    postDarwinNotification(kSettingsChangedNotification);
}

double QLAWSettingThemeListController::tableViewHeightForRowAtIndexPath(UITableView*, NSIndexPath)
{
    return kRowHeight;
}

void QLAWSettingThemeListController::viewDidAppear(bool animated)
{
    PKListItemsController::viewDidAppear(animated);
    std::int64_t seen = getPreferenceValueForKey(preferencesPath(), kNoticeCounterKey).integerValue();
    if (seen < 2) {
        auto* notice = new UIAlertView(localizedString("THEME_POPUP_TITLE"), localizedString("THEME_POPUP"), this,
                                       localizedString("OK_SWEET"), {});
        notice->show();
        setPreferenceValueForKey(preferencesPath(), kNoticeCounterKey, PlistValue(seen + 1));
    }
}

void QLAWSettingThemeListController::viewWillDisappear(bool animated)
{
    PKListItemsController::viewWillDisappear(animated);
    useSecondarySettings = false;
}
