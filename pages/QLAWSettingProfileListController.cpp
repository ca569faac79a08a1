#include "QLAWSettingProfileListController.h"

#include "NewProfileFile.h"
#include "ProfileNameScreen.h"
#include "QLAWSettingThemeListController.h"
#include "QLAWSettingsController.h"
#include "QLAWSettingsMainController.h"
#include "QLProfileCell.h"

#include "render/preview/QLAWBatteryPreView.h"
#include "store/PreferencesStore.h"
#include "store/ProfileList.h"
#include "store/Profiles.h"
#include "store/RenderSettings.h"
#include "store/SettingsCatalogue.h"

#include "pagekit/UIViewFrameAdditions.h"
#include "platform/core/DarwinNotifyCenter.h"
#include "platform/qt/NSBundle.h"
#include "platform/qt/PSTableCell.h"
#include "platform/qt/UIBarButtonItem.h"
#include "platform/qt/UIImageView.h"
#include "platform/qt/UITextField.h"
#include "platform/qt/UIView.h"

#include <QLabel>
#include <QShortcut>

#include <algorithm>
#include <filesystem>

namespace FA = FrameAdditions;

namespace {

constexpr CGSize kReservedImageSize = {110, 40};
constexpr CGRect kPreviewFrame = {{0, 0}, {110, 40}};
constexpr double kPreviewLeft = 18.0;

SharedRenderSettings styleOf(const PlistDict& renderSettings, const char* style)
{
    const PlistValue* stored = renderSettings.find(style);
    return std::make_shared<PlistDict>(stored && stored->asDict() ? *stored->asDict() : PlistDict());
}

void placePreview(PSTableCell* cell)
{
    if (QLAWBatteryPreView* preview = QLAWSettingProfileListController::previewOfCell(cell)) {
        FA::apply(static_cast<QWidget*>(preview), FA::setLeftM, kPreviewLeft);
        FA::apply(static_cast<QWidget*>(preview), FA::setCenterY, cell->height() / 2.0);
    }
}

} // namespace

const ObjCClass& QLAWSettingProfileListController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<QLAWSettingProfileListController>("QLAWSettingProfileListController",
                                                       &PKListItemsController::staticClass())
            .method("localizedString:", &QLAWSettingProfileListController::localizedString)
            .method("navigationTintColor", &QLAWSettingProfileListController::navigationTintColor)
            .method("setPreferenceValue:specifier:", &QLAWSettingProfileListController::setPreferenceValue)
            .method("saveTapped:", &QLAWSettingProfileListController::saveTapped)
            .method("displaySaveNameAlert:", &QLAWSettingProfileListController::displaySaveNameAlert)
            .build();
    return cls;
}

std::string QLAWSettingProfileListController::localizedString(const std::string& key)
{
    std::string translated = bundle().localizedStringForKey(key, key);
    return translated.empty() ? key : translated;
}

UIColor QLAWSettingProfileListController::navigationTintColor()
{
    return QLAWSettingsController::tintColour();
}

void QLAWSettingProfileListController::loadView()
{
    PKListItemsController::loadView();
    im_ = imageWithColorSize(UIColor::clearColor(), kReservedImageSize);
    navigationItem()->setRightBarButtonItem(UIBarButtonItem::withTitle("Save", [this] { saveTapped(); }, this));
    auto* save = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), this);
    save->setContext(Qt::WidgetWithChildrenShortcut);
    connect(save, &QShortcut::activated, this, [this] { saveTapped(); });
    loadProfiles();
}

void QLAWSettingProfileListController::loadProfiles()
{
    undeletable_ = 1;
    // Opened on its own (no main page below it), the page lists the folder the same way.
    QLAWSettingsMainController* main = QLAWSettingsMainController::current();
    profiles_ = main ? main->loadProfiles(Id(false)) : ::loadProfiles();
    if (std::find(profiles_.begin(), profiles_.end(), kMostRecentProfileName) != profiles_.end())
        ++undeletable_;
}

void QLAWSettingProfileListController::reload()
{
    loadProfiles();
    reloadSpecifiers();
}

UIImage QLAWSettingProfileListController::imageWithColorSize(const UIColor& color, CGSize size)
{
    return QLAWSettingThemeListController::imageWithColorSize(color, size);
}

SpecifierList& QLAWSettingProfileListController::specifiers()
{
    if (hasSpecifiers())
        return _specifiers;
    // The rows follow this page's list, not the titles the profile row held when it was
    // tapped: they change with every save, restore and delete.
    SpecifierList items{PSSpecifier::emptyGroupSpecifier()};
    for (const std::string& name : profiles_) {
        auto item = PSSpecifier::preferenceSpecifierNamed(name, this, {}, {}, nullptr, PSListItemCell, nullptr);
        item->setProperty(Id(&QLProfileCell::staticClass()), "cellClass");
        item->setProperty(Id(name), "value");
        items.push_back(item);
    }
    _specifiers = std::move(items);
    return PSListController::specifiers();
}

QLAWBatteryPreView* QLAWSettingProfileListController::previewOfCell(PSTableCell* cell)
{
    return QLAWSettingThemeListController::previewOfCell(cell);
}

PSTableCell* QLAWSettingProfileListController::tableViewCellForRowAtIndexPath(UITableView* table,
                                                                              NSIndexPath indexPath)
{
    // The list machinery's checkmark would mark a current choice; a profile is no setting.
    PSTableCell* cell = PSListController::tableViewCellForRowAtIndexPath(table, indexPath);
    if (!cell)
        return nullptr;
    cell->imageView()->setImage(im_);
    cell->imageView()->show();
    fillRow(cell, cell->textLabel()->text().toStdString(), indexPath.row);
    placePreview(cell);
    return cell;
}

void QLAWSettingProfileListController::fillRow(PSTableCell* cell, const std::string& name, int row)
{
    QLAWBatteryPreView* preview = previewOfCell(cell);
    if (!preview) {
        preview = new QLAWBatteryPreView(kPreviewFrame, cell->contentView());
        UIView::setTag(preview, kPreviewTag);
        if (auto* profileCell = dynamic_cast<QLProfileCell*>(cell))
            connect(profileCell, &QLProfileCell::deleteRequested, this,
                    &QLAWSettingProfileListController::deleteRowOfCell);
    }
    // Read on every pass: "Most Recent" and "Default" are rewritten under the same name.
    std::optional<PlistDict> profile = readProfile(name);
    bool complete = profile && isCompleteProfile(*profile);
    cell->detailTextLabel()->setText(QString::fromStdString(localizedString(complete ? "All" : "Colors")));
    cell->layoutSubviews();
    if (auto* profileCell = dynamic_cast<QLProfileCell*>(cell))
        profileCell->describeProfile(complete, row >= undeletable_);

    if (profile) {
        PlistDict renderSettings = getBatteryRenderSettingsForProfile(*profile);
        preview->setLightSettings(styleOf(renderSettings, "lightSettings"));
        preview->setDarkSettings(styleOf(renderSettings, "darkSettings"));
    } else {
        preview->setLightSettings(nullptr);
        preview->setDarkSettings(nullptr);
    }
    preview->setBatteryImageHeight(kPreviewBatteryHeight);
    preview->refreshBattery();
}

void QLAWSettingProfileListController::tableViewWillDisplayCell(UITableView*, PSTableCell* cell, NSIndexPath)
{
    placePreview(cell);
}

void QLAWSettingProfileListController::tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath)
{
    table->deselectRowAtIndexPath(indexPath, true);
    std::shared_ptr<PSSpecifier> entry = specifierAtIndexPath(indexPath);
    if (!entry)
        return;
    pendingRestoreName_ = entry->name();
    // An unreadable file restores as a colour profile that holds no colours.
    pendingProfileRestore_ = readProfile(pendingRestoreName_).value_or(PlistDict());
    bool complete = isCompleteProfile(*pendingProfileRestore_);
    std::vector<std::string> choices =
        complete ? std::vector<std::string>{localizedString("PROFILE_POPUP_OP_COMP"),
                                            localizedString("PROFILE_POPUP_OP_COL")}
                 : std::vector<std::string>{localizedString("PROFILE_POPUP_OP_CUR"),
                                            localizedString("PROFILE_POPUP_OP_DEF")};
    restoreAlert_ = new UIAlertView(localizedString("RESTORE_PRO"),
                                    localizedString(complete ? "PROFILE_POPUP_COMP" : "PROFILE_POPUP_COLOR"), this,
                                    localizedString("CANCEL"), std::move(choices));
    restoreAlert_->show();
}

bool QLAWSettingProfileListController::tableViewCanEditRowAtIndexPath(UITableView*, NSIndexPath indexPath)
{
    return indexPath.section == 0 && indexPath.row >= undeletable_
        && indexPath.row < static_cast<int>(profiles_.size());
}

QLAWSettingProfileListController::UITableViewCellEditingStyle
QLAWSettingProfileListController::tableViewEditingStyleForRowAtIndexPath(UITableView* table, NSIndexPath indexPath)
{
    return tableViewCanEditRowAtIndexPath(table, indexPath) ? UITableViewCellEditingStyleDelete
                                                            : UITableViewCellEditingStyleNone;
}

void QLAWSettingProfileListController::tableViewCommitEditingStyleForRowAtIndexPath(
    UITableView* table, UITableViewCellEditingStyle style, NSIndexPath indexPath)
{
    if (style != UITableViewCellEditingStyleDelete || !tableViewCanEditRowAtIndexPath(table, indexPath))
        return;
    auto row = static_cast<std::size_t>(indexPath.row);
    PSTableCell* deleted = table->cellForRowAtIndexPath(indexPath);
    bool keyboardWasThere = deleted && deleted->hasFocus();
    std::error_code ignored;
    std::filesystem::remove(profilePath(profiles_[row]), ignored);
    profiles_.erase(profiles_.begin() + indexPath.row);
    reloadEverywhere();
    // The keyboard stays where the row was: on the row that moved up, or on the new last row.
    std::vector<PSTableCell*> cells = this->table()->visibleCells();
    if (keyboardWasThere && !cells.empty())
        cells[std::min(row, cells.size() - 1)]->setFocus(Qt::OtherFocusReason);
}

void QLAWSettingProfileListController::deleteRowOfCell(QLProfileCell* cell)
{
    if (std::optional<NSIndexPath> path = table()->indexPathForCell(cell))
        tableViewCommitEditingStyleForRowAtIndexPath(table(), tableViewEditingStyleForRowAtIndexPath(table(), *path),
                                                     *path);
}

double QLAWSettingProfileListController::tableViewHeightForRowAtIndexPath(UITableView*, NSIndexPath)
{
    return kRowHeight;
}

void QLAWSettingProfileListController::viewDidAppear(bool animated)
{
    PKListItemsController::viewDidAppear(animated);
    std::int64_t seen = getPreferenceValueForKey(preferencesPath(), kNoticeCounterKey).integerValue();
    if (seen < 2) {
        auto* notice = new UIAlertView(localizedString("PROFILE_POPUP_TITLE"), localizedString("PROFILE_POPUP"),
                                       this, std::nullopt, {localizedString("OK_SWEET")});
        notice->show();
        setPreferenceValueForKey(preferencesPath(), kNoticeCounterKey, PlistValue(seen + 1));
    }
}

void QLAWSettingProfileListController::saveTapped()
{
    std::vector<std::string> kinds{localizedString("PROFILE_POPUP_OP_COMP"), localizedString("PROFILE_POPUP_OP_COL")};
    saveTypeAlert_ = new UIAlertView(localizedString("SAVE_PROFILE"), localizedString("PROFILE_ASK_POPUP"), this,
                                     localizedString("CANCEL"), std::move(kinds));
    saveTypeAlert_->show();
}

void QLAWSettingProfileListController::displaySaveNameAlert(bool taken)
{
    showSaveNameAlert(taken ? "PROFILE_BAD_POPUP" : "PROFILE_NAME_POPUP", {});
}

void QLAWSettingProfileListController::showSaveNameAlert(const std::string& messageKey,
                                                         const std::string& rejectedName)
{
    saveNameAlert_ = new UIAlertView(localizedString("PROFILE_NAME"), localizedString(messageKey), this,
                                     localizedString("CANCEL"), {localizedString("SAVE")});
    saveNameAlert_->setAlertViewStyle(UIAlertView::UIAlertViewStylePlainTextInput);
    // A refused name comes back selected: typing replaces it, and a small fix is a small edit.
    UITextField* field = saveNameAlert_->textFieldAtIndex(0);
    field->setTextString(rejectedName);
    saveNameAlert_->show();
    field->selectAll();
}

void QLAWSettingProfileListController::alertViewClickedButtonAtIndex(UIAlertView* alertView, int buttonIndex)
{
    if (alertView == saveTypeAlert_) {
        if (buttonIndex == 1)
            pendingProfileSave_ = currentCompleteProfile();
        else if (buttonIndex == 2)
            pendingProfileSave_ = currentColorProfile();
        else
            pendingProfileSave_.reset();
    } else if (alertView == restoreAlert_) {
        restoreChosen(buttonIndex);
    }
}

void QLAWSettingProfileListController::alertViewDidDismissWithButtonIndex(UIAlertView* alertView, int buttonIndex)
{
    // The name alert follows the type alert once that has gone, so that the keyboard returns
    // to where it was before Save when the last of them goes.
    if (alertView == saveTypeAlert_ && buttonIndex != 0 && pendingProfileSave_)
        displaySaveNameAlert(false);
    else if (alertView == saveNameAlert_ && buttonIndex == 1)
        saveUnderName(alertView->textFieldAtIndex(0)->textString());
    else if (alertView == saveNameAlert_)
        pendingProfileSave_.reset();
}

void QLAWSettingProfileListController::saveUnderName(const std::string& name)
{
    if (!pendingProfileSave_)
        return;
    ProfileNameFault fault = profileNameFault(name, profileDirectoryPath());
    if (fault != ProfileNameFault::None) {
        showSaveNameAlert(profileNameFaultMessageKey(fault), name);
        return;
    }
    switch (writeNewProfile(profilePath(name), *pendingProfileSave_)) {
    case NewProfileWrite::Taken:
        showSaveNameAlert("PROFILE_BAD_POPUP", name);
        return;
    case NewProfileWrite::Written:
        pendingProfileSave_.reset();
        reloadEverywhere();
        focusRowNamed(name);
        return;
    case NewProfileWrite::Failed:
        pendingProfileSave_.reset();
        return;
    }
}

void QLAWSettingProfileListController::restoreChosen(int buttonIndex)
{
    if (buttonIndex == 0 || !pendingProfileRestore_)
        return;
    PlistDict profile = std::move(*pendingProfileRestore_);
    pendingProfileRestore_.reset();
    writeProfile(kMostRecentProfileName, currentCompleteProfile());
    bool complete = isCompleteProfile(profile);
    if (complete && buttonIndex == 1) {
        applyProfile(profile);
    } else if (!complete && buttonIndex == 2) {
        // Its colours, and every other setting back at its default.
        profile.addEntriesFrom(otherProfileTemplate());
        applyProfile(profile);
    } else {
        applyOnlyColorProfile(profile);
    }
    reloadEverywhere();
    postDarwinNotification(kSettingsChangedNotification);
    focusRowNamed(pendingRestoreName_);
}

void QLAWSettingProfileListController::reloadEverywhere()
{
    if (QLAWSettingsMainController* main = QLAWSettingsMainController::current()) {
        main->reloadSpecifiers();
        main->reload();
    }
    reload();
}

void QLAWSettingProfileListController::focusRowNamed(const std::string& name)
{
    for (PSTableCell* cell : table()->visibleCells())
        if (cell->specifier() && cell->specifier()->name() == name) {
            cell->setFocus(Qt::OtherFocusReason);
            return;
        }
}
