#pragma once

#include "NSObject.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The settings framework's numeric cell types.
enum PSCellType {
    PSGroupCell = 0,
    PSLinkCell = 1,
    PSLinkListCell = 2,
    PSListItemCell = 3,
    PSTitleValueCell = 4,
    PSSliderCell = 5,
    PSSwitchCell = 6,
    PSStaticTextCell = 7,
    PSEditTextCell = 8,
    PSSegmentCell = 9,
    PSGiantIconCell = 10,
    PSGiantCell = 11,
    PSSecureEditTextCell = 12,
    PSButtonCell = 13,
    PSEditTextViewCell = 14,
};

// One page entry: a row or a group heading. Methods are kept by selector name and called on
// the target when the row reads, writes or acts; classes are kept as registered classes.
class PSSpecifier {
public:
    static std::shared_ptr<PSSpecifier> preferenceSpecifierNamed(std::string name, NSObject* target,
                                                                 std::string setter, std::string getter,
                                                                 const ObjCClass* detail, PSCellType cell,
                                                                 const ObjCClass* edit);
    static std::shared_ptr<PSSpecifier> groupSpecifierWithName(std::string name);
    static std::shared_ptr<PSSpecifier> emptyGroupSpecifier();

    const std::string& name() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    NSObject* target() const { return target_; }
    void setTarget(NSObject* target) { target_ = target; }
    const std::string& setter() const { return setter_; }
    const std::string& getter() const { return getter_; }
    const std::string& action() const { return action_; }
    void setAction(std::string action) { action_ = std::move(action); }
    const ObjCClass* detailControllerClass() const { return detail_; }
    const ObjCClass* editPaneClass() const { return edit_; }
    PSCellType cellType() const { return cellType_; }
    std::string identifier() const;

    // The values of a choose-one list and the title shown for each.
    void setValuesTitles(PlistArray values, PlistArray titles);
    const PlistArray& values() const { return values_; }
    const PlistArray& titles() const { return titles_; }
    // The value-to-title dictionary, in value order.
    std::vector<std::pair<PlistValue, std::string>> titleDictionary() const;
    void setTitleDictionary(const std::vector<std::pair<PlistValue, std::string>>& titles);
    // The title shown for a value, or nothing when the list does not hold it.
    std::optional<std::string> titleForValue(const PlistValue& value) const;

    // The property, or nil; the reference stays valid until the property changes.
    const Id& propertyForKey(std::string_view key) const;
    void setProperty(Id value, std::string_view key) { properties_.set(key, std::move(value)); }
    void removePropertyForKey(std::string_view key) { properties_.remove(key); }
    const NSDictionary& properties() const { return properties_; }

private:
    std::string name_;
    NSObject* target_ = nullptr;
    std::string setter_;
    std::string getter_;
    std::string action_;
    const ObjCClass* detail_ = nullptr;
    const ObjCClass* edit_ = nullptr;
    PSCellType cellType_ = PSGroupCell;
    PlistArray values_;
    PlistArray titles_;
    NSDictionary properties_;
};

using SpecifierList = std::vector<std::shared_ptr<PSSpecifier>>;
