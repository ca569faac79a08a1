#include "PKSpecifierParser.h"

#include "platform/core/UIImageColored.h"
#include "platform/qt/NSBundle.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<std::string_view, PSCellType>, 15> kCellTypes{{
    {"PSGroupCell", PSGroupCell},
    {"PSLinkCell", PSLinkCell},
    {"PSLinkListCell", PSLinkListCell},
    {"PSListItemCell", PSListItemCell},
    {"PSTitleValueCell", PSTitleValueCell},
    {"PSSliderCell", PSSliderCell},
    {"PSSwitchCell", PSSwitchCell},
    {"PSStaticTextCell", PSStaticTextCell},
    {"PSEditTextCell", PSEditTextCell},
    {"PSSegmentCell", PSSegmentCell},
    {"PSGiantIconCell", PSGiantIconCell},
    {"PSGiantCell", PSGiantCell},
    {"PSSecureEditTextCell", PSSecureEditTextCell},
    {"PSButtonCell", PSButtonCell},
    {"PSEditTextViewCell", PSEditTextViewCell},
}};

const std::string* textFor(const NSDictionary& entry, std::string_view key)
{
    const Id* value = entry.find(key);
    return value ? value->string() : nullptr;
}

const ObjCClass* classNamedBy(const Id& name)
{
    if (const ObjCClass* cls = name.cls())
        return cls;
    const std::string* text = name.string();
    return text ? ObjCClass::named(*text) : nullptr;
}

// An image of the entry: looked up in the bundle of the target's class, then in the
// framework's own.
UIImage imageNamedFor(const Id& name, NSObject* target)
{
    if (const UIImage* image = name.image())
        return *image;
    const std::string* text = name.string();
    if (!text)
        return UIImage();
    if (target)
        if (UIImage image = NSBundle::bundleForClass(target->isa()).imageNamed(*text))
            return image;
    return NSBundle::bundleForClass(PKSpecifierParser::staticClass()).imageNamed(*text);
}

} // namespace

const ObjCClass& PKSpecifierParser::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<PKSpecifierParser>("PKSpecifierParser", &NSObject::staticClass()).build();
    return cls;
}

PSCellType PKSpecifierParser::PSCellTypeFromString(const Id& name)
{
    const std::string* text = name.string();
    if (!text)
        return PSGroupCell;
    for (const auto& [cellName, type] : kCellTypes)
        if (*text == cellName)
            return type;
    return PSGroupCell;
}

SpecifierList PKSpecifierParser::specifiersFromArrayForTarget(const EntryTable& table, NSObject* target)
{
    SpecifierList entries;
    for (const NSDictionary& entry : table) {
        const Id* cell = entry.find("cell");
        PSCellType type = cell ? PSCellTypeFromString(*cell) : PSGroupCell;
        std::shared_ptr<PSSpecifier> specifier;
        const Id* label = entry.find("label");
        if (type != PSGroupCell) {
            std::string name = label && label->string() ? *label->string() : std::string();
            const ObjCClass* detail = entry.contains("detail") ? classNamedBy(entry.value("detail")) : nullptr;
            const ObjCClass* pane = entry.contains("pane") ? classNamedBy(entry.value("pane")) : nullptr;
            const std::string* set = textFor(entry, "set");
            const std::string* get = textFor(entry, "get");
            specifier = PSSpecifier::preferenceSpecifierNamed(
                name, target, set ? *set : std::string("setPreferenceValue:specifier:"),
                get ? *get : std::string("readPreferenceValue:"), detail, type, pane);
            const std::string* action = textFor(entry, "action");
            specifier->setAction(action ? *action : std::string());

            const Id* titles = entry.find("validTitles");
            const Id* values = entry.find("validValues");
            if (titles && values) {
                PlistArray titleList;
                PlistArray valueList;
                if (const PlistValue* array = titles->plist(); array && array->asArray())
                    titleList = *array->asArray();
                if (const PlistValue* array = values->plist(); array && array->asArray())
                    valueList = *array->asArray();
                specifier->setValuesTitles(std::move(valueList), std::move(titleList));
            }
            for (const auto& [key, value] : entry) {
                if (key == "cellClass")
                    specifier->setProperty(Id(classNamedBy(value)), "cellClass");
                else if (key != "validValues" && key != "validTitles")
                    specifier->setProperty(value, key);
            }
        } else {
            if (label) {
                specifier = PSSpecifier::groupSpecifierWithName(label->string() ? *label->string() : std::string());
                specifier->setProperty(*label, "label");
            } else {
                specifier = PSSpecifier::emptyGroupSpecifier();
            }
            if (const Id* footer = entry.find("footerText"))
                specifier->setProperty(*footer, "footerText");
            specifier->setProperty(Id("PSGroupCell"), "cell");
        }

        if (const Id* iconName = entry.find("icon")) {
            UIImage icon = imageNamedFor(*iconName, target);
            if (target && target->respondsToSelector("iconColor"))
                icon = changeImageColor(icon, target->perform<UIColor>("iconColor"));
            else if (target && target->respondsToSelector("tintColor"))
                icon = changeImageColor(icon, target->perform<UIColor>("tintColor"));
            specifier->setProperty(Id(icon), "iconImage");
        }
        for (const char* side : {"leftImage", "rightImage"})
            if (const Id* imageName = entry.find(side))
                specifier->setProperty(Id(imageNamedFor(*imageName, target)), side);

        if (const Id* identifier = entry.find("id"))
            specifier->setProperty(*identifier, "id");
        else if (label)
            specifier->setProperty(*label, "id");
        specifier->setTarget(target);
        entries.push_back(std::move(specifier));
    }
    return entries;
}
