#pragma once

#include "PSSpecifier.h"
#include "UITableView.h"
#include "UIViewController.h"

#include <QPointer>

#include <map>
#include <optional>

class NSBundle;

// A settings page: its entries shown as a grouped table. Group entries start sections
// (their name is the heading, "footerText" the footer); every other entry is a row made
// from its "cellClass" (or the default cell of its kind). Rows read their value through
// the entry's getter and write through its setter, both called on the entry's target.
class PSListController : public UIViewController, public UITableViewDataSource {
    Q_OBJECT
    AMPWELL_OBJC_CLASS()

public:
    PSListController();
    ~PSListController() override;

    // The page's entries; a subclass builds them on first demand.
    virtual SpecifierList& specifiers();
    bool hasSpecifiers() const { return specifiersLoaded_; }
    void setSpecifiers(SpecifierList specifiers);
    // Clears the entries, builds them again and remakes the table.
    void reloadSpecifiers();
    // Remakes the table's rows from the current entries, reading every value again.
    void reload();
    std::shared_ptr<PSSpecifier> specifierForID(const std::string& identifier);
    std::shared_ptr<PSSpecifier> specifierAtIndexPath(NSIndexPath indexPath);
    // The entry that opened this page (a link row of the page below).
    std::shared_ptr<PSSpecifier> specifier() const { return specifier_; }
    void setSpecifier(std::shared_ptr<PSSpecifier> specifier) { specifier_ = std::move(specifier); }
    // Entries read from a property list "<name>.plist" in the bundle (an "items" array of
    // entry dictionaries); none when it cannot be read.
    SpecifierList loadSpecifiersFromPlistName(const std::string& name, NSObject* target);
    // Asks the entry's data sources for its values and titles.
    void loadDataSourcesForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

    UITableView* table() const { return table_; }
    NSBundle& bundle() const;
    // The first page of the stack this page is on.
    PSListController* rootController();
    PSListController* parentController();

    // The platform's own storage: the entry's "defaults" file in the preferences folder.
    Id readPreferenceValue(std::shared_ptr<PSSpecifier> specifier);
    void setPreferenceValue(Id value, std::shared_ptr<PSSpecifier> specifier);
    virtual void removedSpecifier(std::shared_ptr<PSSpecifier>) {}

    void loadView() override;
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    // Puts the keyboard on the first row unless something on the page has it already.
    void viewDidAppear(bool animated) override;

    // The table's questions, answered from the entries.
    int numberOfSectionsInTableView(UITableView* table) override;
    int tableViewNumberOfRowsInSection(UITableView* table, int section) override;
    PSTableCell* tableViewCellForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    double tableViewHeightForRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;
    std::string tableViewTitleForHeaderInSection(UITableView* table, int section) override;
    std::string tableViewTitleForFooterInSection(UITableView* table, int section) override;
    void tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath) override;

    // The cell for an entry, made from its "cellClass" and showing its current value. An entry
    // keeps its cell for as long as the page shows it: a reload hands the same cell back.
    PSTableCell* cellForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
    // The cell made for the entry, if it still exists.
    PSTableCell* cachedCellForSpecifier(const std::shared_ptr<PSSpecifier>& specifier) const;
    // The entry's value as its getter reads it.
    Id valueForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);
    // Opens the page a link row names; nothing when the class is unknown or no page.
    void pushControllerForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

protected:
    SpecifierList _specifiers;

private:
    struct Group {
        std::shared_ptr<PSSpecifier> heading;
        SpecifierList rows;
    };
    void rebuildGroups();

    // A slider without a label of its own is named by the text row just above it.
    QString captionForSpecifier(const std::shared_ptr<PSSpecifier>& specifier);

    std::vector<Group> groups_;
    std::map<const PSSpecifier*, QPointer<PSTableCell>> cells_;
    bool specifiersLoaded_ = false;
    std::shared_ptr<PSSpecifier> specifier_;
    UITableView* table_ = nullptr;
};
