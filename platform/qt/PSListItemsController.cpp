#include "PSListItemsController.h"

#include "PSTableCell.h"

const ObjCClass& PSListItemsController::staticClass()
{
    static const ObjCClass& cls =
        ClassBuilder<PSListItemsController>("PSListItemsController", &PSListController::staticClass()).build();
    return cls;
}

SpecifierList& PSListItemsController::specifiers()
{
    if (hasSpecifiers())
        return _specifiers;
    SpecifierList items;
    items.push_back(PSSpecifier::emptyGroupSpecifier());
    if (std::shared_ptr<PSSpecifier> row = specifier())
        for (const auto& [value, title] : row->titleDictionary()) {
            auto item = PSSpecifier::preferenceSpecifierNamed(title, this, {}, {}, nullptr, PSListItemCell, nullptr);
            item->setProperty(Id(value), "value");
            items.push_back(item);
        }
    _specifiers = std::move(items);
    return PSListController::specifiers();
}

PlistValue PSListItemsController::currentValue()
{
    std::shared_ptr<PSSpecifier> row = specifier();
    if (!row || !row->target() || row->getter().empty())
        return PlistValue();
    return row->target()->performSelector(row->getter(), {row}).plistValue();
}

PSTableCell* PSListItemsController::tableViewCellForRowAtIndexPath(UITableView* table, NSIndexPath indexPath)
{
    PSTableCell* cell = PSListController::tableViewCellForRowAtIndexPath(table, indexPath);
    std::shared_ptr<PSSpecifier> item = specifierAtIndexPath(indexPath);
    if (cell && item)
        cell->setAccessoryType(item->propertyForKey("value").plistValue() == currentValue()
                                   ? UITableViewCellAccessoryCheckmark
                                   : UITableViewCellAccessoryNone);
    return cell;
}

void PSListItemsController::tableViewDidSelectRowAtIndexPath(UITableView* table, NSIndexPath indexPath)
{
    std::shared_ptr<PSSpecifier> item = specifierAtIndexPath(indexPath);
    std::shared_ptr<PSSpecifier> row = specifier();
    if (!item || !row)
        return;
    if (row->target() && !row->setter().empty())
        row->target()->performSelector(row->setter(), {item->propertyForKey("value"), row});
    for (PSTableCell* cell : table->visibleCells())
        cell->setAccessoryType(cell->specifier() == item ? UITableViewCellAccessoryCheckmark
                                                         : UITableViewCellAccessoryNone);
}
