#pragma once

#include "pagekit/PKListItemsController.h"
#include "platform/core/UIImage.h"
#include "platform/qt/UIAlertView.h"

#include <QPointer>

#include <optional>
#include <string>
#include <vector>

class QLAWBatteryPreView;
class QLProfileCell;

// The saved profiles, each row with a light and dark preview of its battery. Save keeps the
// current settings (all of them or only the colours) under a new name; tapping a row restores
// it, whole or colours only, after keeping the current settings as "Most Recent" so that the
// restore can be undone; every row but "Most Recent" and "Default" can be deleted. The main
// page owns the list of names; this page asks it for the list and tells it of every change.
class QLAWSettingProfileListController : public PKListItemsController, public UIAlertViewDelegate {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    enum UITableViewCellEditingStyle { UITableViewCellEditingStyleNone = 0, UITableViewCellEditingStyleDelete = 1 };

    static constexpr int kPreviewTag = 717;
    static constexpr double kRowHeight = 80.0;
    static constexpr float kPreviewBatteryHeight = 20.0f;
    static constexpr const char* kNoticeCounterKey = "viewedPP";

    std::string localizedString(const std::string& key);
    UIColor navigationTintColor();
    void loadView() override;
    void loadProfiles();
    // Lists the profiles again and rebuilds the rows from the new list.
    void reload();
    static UIImage imageWithColorSize(const UIColor& color, CGSize size);

    SpecifierList& specifiers() override;
    PSTableCell* tableViewCellForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    void tableViewWillDisplayCell(UITableView* table, PSTableCell* cell, NSIndexPath indexPath) override;
    void setPreferenceValue(Id, std::shared_ptr<PSSpecifier>) {}
    void tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    bool tableViewCanEditRowAtIndexPath(UITableView* table, NSIndexPath indexPath);
    UITableViewCellEditingStyle tableViewEditingStyleForRowAtIndexPath(UITableView* table, NSIndexPath indexPath);
    void tableViewCommitEditingStyleForRowAtIndexPath(UITableView* table, UITableViewCellEditingStyle style,
                                                     NSIndexPath indexPath);
    double tableViewHeightForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    void viewDidAppear(bool animated) override;
    void saveTapped();
    // Asks for the new profile's name; `taken` says the name given before is in use.
    void displaySaveNameAlert(bool taken);
    void alertViewClickedButtonAtIndex(UIAlertView* alertView, int buttonIndex) override;
    void alertViewDidDismissWithButtonIndex(UIAlertView* alertView, int buttonIndex) override;

    const std::vector<std::string>& profiles() const { return profiles_; }
    int undeletable() const { return undeletable_; }
    UIAlertView* saveNameAlert() const { return saveNameAlert_; }
    UIAlertView* saveTypeAlert() const { return saveTypeAlert_; }
    UIAlertView* restoreAlert() const { return restoreAlert_; }
    // The preview panel of a row, or null.
    static QLAWBatteryPreView* previewOfCell(PSTableCell* cell);

private:
    void showSaveNameAlert(const std::string& messageKey, const std::string& rejectedName);
    void saveUnderName(const std::string& name);
    void restoreChosen(int buttonIndex);
    void deleteRowOfCell(QLProfileCell* cell);
    // The main page's list and rows, then this page's, after a profile came, went or changed.
    void reloadEverywhere();
    void focusRowNamed(const std::string& name);
    void fillRow(PSTableCell* cell, const std::string& name, int row);

    UIImage im_;
    QPointer<UIAlertView> saveNameAlert_;
    QPointer<UIAlertView> saveTypeAlert_;
    QPointer<UIAlertView> restoreAlert_;
    std::optional<PlistDict> pendingProfileSave_;
    std::optional<PlistDict> pendingProfileRestore_;
    std::string pendingRestoreName_;
    std::vector<std::string> profiles_;
    int undeletable_ = 1;
};
