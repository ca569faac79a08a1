#pragma once

#include "pagekit/PKListItemsController.h"
#include "platform/core/UIImage.h"
#include "platform/qt/UIAlertView.h"

#include <string>

class QLAWBatteryPreView;

// The list of installed themes for one theme row: each row shows the theme's name and a live
// preview of it, light and dark, in the user's colours. Picking a row stores the theme and
// announces the change. The first two visits show a short notice.
class QLAWSettingThemeListController : public PKListItemsController, public UIAlertViewDelegate {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    static constexpr int kPreviewTag = 717;
    static constexpr double kRowHeight = 80.0;
    static constexpr float kPreviewBatteryHeight = 20.0f;
    static constexpr const char* kNoticeCounterKey = "viewedTP";

    // Previews show the primary theme's mirror settings.
    QLAWSettingThemeListController();

    std::string localizedString(const std::string& key);
    UIColor navigationTintColor();
    void loadView() override;
    // An image of the size filled with the colour, at scale 1.
    static UIImage imageWithColorSize(const UIColor& color, CGSize size);
    PSTableCell* tableViewCellForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    void tableViewWillDisplayCell(UITableView* table, PSTableCell* cell, NSIndexPath indexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    double tableViewHeightForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    void viewDidAppear(bool animated) override;
    void alertViewDidDismissWithButtonIndex(UIAlertView*, int) override {}
    void viewWillDisappear(bool animated) override;

    // The preview panel of a row, or null.
    static QLAWBatteryPreView* previewOfCell(PSTableCell* cell);

private:
    static void placePreview(PSTableCell* cell);
    static void fillPreview(QLAWBatteryPreView* preview, const std::string& theme);

    UIImage im_;
};

// The list for the secondary theme: its previews show the secondary mirror settings.
class QLAWSettingSecondaryThemeListController : public QLAWSettingThemeListController {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    QLAWSettingSecondaryThemeListController();
};
