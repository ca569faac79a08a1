#include "PSListController.h"

#include "NSBundle.h"
#include "PSTableCell.h"
#include "UINavigationController.h"

#include "platform/core/DarwinNotifyCenter.h"
#include "platform/core/PropertyListFile.h"
#include "platform/core/PropertyListUpdate.h"
#include "platform/core/Root.h"
#include "platform/core/SystemLog.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <QVBoxLayout>

namespace {

constexpr std::string_view kPreferencesFolder = "/var/mobile/Library/Preferences/";

// The file an entry's "defaults" names, or nothing for a name that is no plain file name.
std::optional<std::string> defaultsPath(const PSSpecifier& specifier)
{
    const std::string* domain = specifier.propertyForKey("defaults").string();
    if (!domain || domain->empty() || domain->find('/') != std::string::npos || *domain == "." || *domain == "..")
        return std::nullopt;
    std::string file = *domain;
    if (!file.ends_with(".plist"))
        file += ".plist";
    return Root::path(std::string(kPreferencesFolder) + file);
}

} // namespace

const ObjCClass& PSListController::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<PSListController>("PSListController", &UIViewController::staticClass())
                                      .method("readPreferenceValue:", &PSListController::readPreferenceValue)
                                      .method("setPreferenceValue:specifier:", &PSListController::setPreferenceValue)
                                      .build();
    return cls;
}

PSListController::PSListController() = default;

PSListController::~PSListController()
{
    // Entries outlive the page in other hands (a pushed list page); they must not call it.
    for (const std::shared_ptr<PSSpecifier>& entry : _specifiers)
        if (entry->target() == this)
            entry->setTarget(nullptr);
}

SpecifierList& PSListController::specifiers()
{
    specifiersLoaded_ = true;
    return _specifiers;
}

void PSListController::setSpecifiers(SpecifierList specifiers)
{
    _specifiers = std::move(specifiers);
    cells_.clear();
    specifiersLoaded_ = true;
    if (table_)
        reload();
}

void PSListController::reloadSpecifiers()
{
    _specifiers.clear();
    cells_.clear();
    specifiersLoaded_ = false;
    if (table_)
        reload();
}

void PSListController::rebuildGroups()
{
    groups_.clear();
    for (const std::shared_ptr<PSSpecifier>& entry : specifiers()) {
        if (entry->cellType() == PSGroupCell)
            groups_.push_back(Group{entry, {}});
        else {
            if (groups_.empty())
                groups_.push_back(Group{nullptr, {}});
            groups_.back().rows.push_back(entry);
        }
    }
}

void PSListController::reload()
{
    if (!table_)
        return;
    try {
        rebuildGroups();
    } catch (const std::exception&) {
        // A page that cannot say what it shows stays empty rather than taking the app down.
        groups_.clear();
        systemLog("AMPW: page " + isa().name() + " has no entries");
    }
    table_->reloadData();
}

std::shared_ptr<PSSpecifier> PSListController::specifierForID(const std::string& identifier)
{
    try {
        for (const std::shared_ptr<PSSpecifier>& entry : specifiers())
            if (entry->identifier() == identifier)
                return entry;
    } catch (const std::exception&) {
    }
    return nullptr;
}

std::shared_ptr<PSSpecifier> PSListController::specifierAtIndexPath(NSIndexPath indexPath)
{
    if (indexPath.section < 0 || indexPath.section >= static_cast<int>(groups_.size()))
        return nullptr;
    const SpecifierList& rows = groups_[static_cast<std::size_t>(indexPath.section)].rows;
    if (indexPath.row < 0 || indexPath.row >= static_cast<int>(rows.size()))
        return nullptr;
    return rows[static_cast<std::size_t>(indexPath.row)];
}

SpecifierList PSListController::loadSpecifiersFromPlistName(const std::string& name, NSObject* target)
{
    SpecifierList entries;
    if (name.empty() || name.find('/') != std::string::npos)
        return entries;
    QFile file(QString::fromStdString(bundle().folder() + "/" + name + ".plist"));
    if (!file.open(QIODevice::ReadOnly) || file.size() > static_cast<qint64>(kMaxPropertyListFileSize))
        return entries;
    QByteArray data = file.readAll();
    PlistValue root = parsePropertyList(reinterpret_cast<const std::uint8_t*>(data.constData()),
                                        static_cast<std::size_t>(data.size()));
    const PlistDict* dictionary = root.asDict();
    const PlistValue* items = dictionary ? dictionary->find("items") : nullptr;
    if (!items || !items->asArray())
        return entries;
    for (const PlistValue& item : *items->asArray()) {
        const PlistDict* entry = item.asDict();
        if (!entry)
            continue;
        const PlistValue* cellValue = entry->find("cell");
        const std::string* cell = cellValue ? cellValue->asString() : nullptr;
        const PlistValue* labelValue = entry->find("label");
        std::string label = labelValue && labelValue->asString() ? *labelValue->asString() : std::string();
        std::shared_ptr<PSSpecifier> specifier;
        if (!cell || *cell == "PSGroupCell")
            specifier = PSSpecifier::groupSpecifierWithName(label);
        else
            specifier = PSSpecifier::preferenceSpecifierNamed(label, target, "setPreferenceValue:specifier:",
                                                              "readPreferenceValue:", nullptr, PSLinkCell, nullptr);
        for (const PlistDict::Entry& property : *entry)
            specifier->setProperty(Id(property.value), property.key);
        entries.push_back(specifier);
    }
    return entries;
}

void PSListController::loadDataSourcesForSpecifier(const std::shared_ptr<PSSpecifier>& specifier)
{
    NSObject* target = specifier->target();
    if (!target)
        return;
    const std::string* titlesSource = specifier->propertyForKey("titlesDataSource").string();
    const std::string* valuesSource = specifier->propertyForKey("valuesDataSource").string();
    if (!titlesSource && !valuesSource)
        return;
    PlistArray titles = specifier->titles();
    PlistArray values = specifier->values();
    if (titlesSource) {
        Id result = target->performSelector(*titlesSource, {specifier});
        titles.clear();
        for (const std::string& title : IdCast<std::vector<std::string>>::from(result))
            titles.emplace_back(title);
    }
    if (valuesSource) {
        Id result = target->performSelector(*valuesSource, {specifier});
        values.clear();
        if (const PlistValue* array = result.plist(); array && array->asArray())
            values = *array->asArray();
    }
    specifier->setValuesTitles(std::move(values), std::move(titles));
}

NSBundle& PSListController::bundle() const
{
    return NSBundle::bundleForClass(isa());
}

PSListController* PSListController::rootController()
{
    UINavigationController* navigation = navigationController();
    if (navigation && !navigation->viewControllers().empty())
        if (auto* root = dynamic_cast<PSListController*>(navigation->viewControllers().front()))
            return root;
    return this;
}

PSListController* PSListController::parentController()
{
    UINavigationController* navigation = navigationController();
    if (!navigation)
        return nullptr;
    const auto& stack = navigation->viewControllers();
    for (std::size_t i = 1; i < stack.size(); ++i)
        if (stack[i] == this)
            return dynamic_cast<PSListController*>(stack[i - 1]);
    return nullptr;
}

Id PSListController::readPreferenceValue(std::shared_ptr<PSSpecifier> specifier)
{
    if (!specifier)
        return Id();
    const std::string* key = specifier->propertyForKey("key").string();
    std::optional<std::string> path = defaultsPath(*specifier);
    if (key && path)
        if (std::optional<PlistDict> file = readPropertyListDictionary(*path))
            if (const PlistValue* value = file->find(*key))
                return Id(*value);
    return specifier->propertyForKey("default");
}

void PSListController::setPreferenceValue(Id value, std::shared_ptr<PSSpecifier> specifier)
{
    if (!specifier || !value.plist() || value.isNil())
        return;
    const std::string* key = specifier->propertyForKey("key").string();
    std::optional<std::string> path = defaultsPath(*specifier);
    if (!key || !path)
        return;
    PlistValue stored = *value.plist();
    updatePropertyListFile(*path, MissingFilePolicy::StartEmpty, [&](PlistDict& file) { file.set(*key, stored); });
    if (const std::string* notification = specifier->propertyForKey("PostNotification").string())
        postDarwinNotification(*notification);
}

void PSListController::loadView()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    table_ = new UITableView(this, this);
    layout->addWidget(table_);
}

void PSListController::viewDidLoad()
{
    // The entries are asked for once loading is done, as the platform's table first asks
    // its data source after the view exists.
    reload();
}

void PSListController::viewWillAppear(bool)
{
    // Values may have changed on a page above (a list choice); show them afresh.
    if (table_)
        for (PSTableCell* cell : table_->visibleCells())
            if (std::shared_ptr<PSSpecifier> entry = cell->specifier(); entry && entry->cellType() != PSGroupCell)
                if (entry->cellType() == PSLinkListCell || entry->cellType() == PSTitleValueCell)
                    cell->setValue(valueForSpecifier(entry));
}

void PSListController::viewDidAppear(bool)
{
    QWidget* focused = window()->focusWidget();
    if (!table_ || (focused && isAncestorOf(focused)))
        return;
    for (PSTableCell* cell : table_->visibleCells())
        if (cell->focusPolicy() != Qt::NoFocus && !cell->isHidden()) {
            cell->setFocus(Qt::OtherFocusReason);
            return;
        }
}

int PSListController::numberOfSectionsInTableView(UITableView*)
{
    return static_cast<int>(groups_.size());
}

int PSListController::tableViewNumberOfRowsInSection(UITableView*, int section)
{
    return section >= 0 && section < static_cast<int>(groups_.size())
        ? static_cast<int>(groups_[static_cast<std::size_t>(section)].rows.size())
        : 0;
}

PSTableCell* PSListController::tableViewCellForRowAtIndexPath(UITableView*, NSIndexPath indexPath)
{
    std::shared_ptr<PSSpecifier> entry = specifierAtIndexPath(indexPath);
    return entry ? cellForSpecifier(entry) : nullptr;
}

double PSListController::tableViewHeightForRowAtIndexPath(UITableView*, NSIndexPath indexPath)
{
    std::shared_ptr<PSSpecifier> entry = specifierAtIndexPath(indexPath);
    Id height = entry ? entry->propertyForKey("height") : Id();
    if (height.plist() && height.plist()->isNumber() && height.doubleValue() > 0)
        return height.doubleValue();
    if (PSTableCell* cell = entry ? cachedCellForSpecifier(entry) : nullptr) {
        double preferred = cell->preferredHeightForWidth(table_ ? table_->viewport()->width() : width());
        if (preferred > 0 && std::isfinite(preferred))
            return preferred;
    }
    return 44;
}

std::string PSListController::tableViewTitleForHeaderInSection(UITableView*, int section)
{
    if (section < 0 || section >= static_cast<int>(groups_.size()) || !groups_[static_cast<std::size_t>(section)].heading)
        return {};
    return groups_[static_cast<std::size_t>(section)].heading->name();
}

std::string PSListController::tableViewTitleForFooterInSection(UITableView*, int section)
{
    if (section < 0 || section >= static_cast<int>(groups_.size()) || !groups_[static_cast<std::size_t>(section)].heading)
        return {};
    Id footer = groups_[static_cast<std::size_t>(section)].heading->propertyForKey("footerText");
    return footer.string() ? *footer.string() : std::string();
}

void PSListController::tableViewDidSelectRowAtIndexPath(UITableView*, NSIndexPath indexPath)
{
    std::shared_ptr<PSSpecifier> entry = specifierAtIndexPath(indexPath);
    if (!entry)
        return;
    if (!entry->action().empty() && entry->target()) {
        entry->target()->performSelector(entry->action(), {entry});
        return;
    }
    if (entry->cellType() == PSLinkCell || entry->cellType() == PSLinkListCell)
        pushControllerForSpecifier(entry);
}

Id PSListController::valueForSpecifier(const std::shared_ptr<PSSpecifier>& specifier)
{
    NSObject* target = specifier->target();
    if (!target || specifier->getter().empty())
        return Id();
    return target->performSelector(specifier->getter(), {specifier});
}

PSTableCell* PSListController::cachedCellForSpecifier(const std::shared_ptr<PSSpecifier>& specifier) const
{
    auto found = cells_.find(specifier.get());
    return found != cells_.end() ? found->second.data() : nullptr;
}

PSTableCell* PSListController::cellForSpecifier(const std::shared_ptr<PSSpecifier>& specifier)
{
    PSTableCell* cell = cachedCellForSpecifier(specifier);
    if (!cell) {
        const ObjCClass* cls = specifier->propertyForKey("cellClass").cls();
        bool valued = specifier->cellType() == PSLinkListCell || specifier->cellType() == PSTitleValueCell;
        int style = valued ? UITableViewCellStyleValue1 : UITableViewCellStyleDefault;
        if (specifier->cellType() == PSLinkListCell)
            loadDataSourcesForSpecifier(specifier);
        cell = cls ? cls->createCell(style, cls->name(), specifier) : nullptr;
        if (!cell) {
            const ObjCClass& fallback = PSTableCell::cellClassForSpecifier(*specifier);
            cell = fallback.createCell(style, fallback.name(), specifier);
        }
        if (!cell)
            return nullptr;
        if (QString caption = captionForSpecifier(specifier); !caption.isEmpty())
            cell->setAccessibilityLabel(caption);
        cells_[specifier.get()] = cell;
    }
    switch (specifier->cellType()) {
    case PSLinkListCell:
    case PSTitleValueCell:
    case PSSwitchCell:
    case PSSliderCell:
    case PSEditTextCell:
    case PSSegmentCell:
        cell->setValue(valueForSpecifier(specifier));
        break;
    default:
        break;
    }
    return cell;
}

QString PSListController::captionForSpecifier(const std::shared_ptr<PSSpecifier>& specifier)
{
    if (specifier->cellType() != PSSliderCell || !specifier->name().empty())
        return {};
    auto at = std::find(_specifiers.begin(), _specifiers.end(), specifier);
    if (at == _specifiers.begin() || at == _specifiers.end())
        return {};
    const std::shared_ptr<PSSpecifier>& above = *(at - 1);
    return above->cellType() == PSStaticTextCell ? QString::fromStdString(above->name()) : QString();
}

void PSListController::pushControllerForSpecifier(const std::shared_ptr<PSSpecifier>& specifier)
{
    const ObjCClass* cls = specifier->detailControllerClass();
    if (!cls && specifier->cellType() == PSLinkListCell && !specifier->propertyForKey("detail"))
        cls = ObjCClass::named("PSListItemsController");
    UINavigationController* navigation = navigationController();
    if (!cls || !navigation)
        return;
    NSObject* made = cls->createInstance();
    auto* page = dynamic_cast<UIViewController*>(made);
    if (!page) {
        delete made;
        return;
    }
    if (auto* list = dynamic_cast<PSListController*>(page)) {
        if (specifier->cellType() == PSLinkListCell)
            loadDataSourcesForSpecifier(specifier);
        list->setSpecifier(specifier);
    }
    if (page->title().empty())
        page->setTitle(specifier->name());
    navigation->pushViewController(page, true);
}
