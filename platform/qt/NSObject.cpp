#include "NSObject.h"

#include "PSSpecifier.h"
#include "PSTableCell.h"

#include <map>
#include <mutex>

Id::Id(UIImage image) : v_(std::move(image)) {}
Id::Id(const ObjCClass* cls) { if (cls) v_ = cls; }
Id::Id(QWidget* view) { if (view) v_ = QPointer<QWidget>(view); }
Id::Id(std::shared_ptr<PSSpecifier> specifier) { if (specifier) v_ = std::move(specifier); }
Id::Id(NSArray array) : v_(std::make_shared<const NSArray>(std::move(array))) {}
Id::Id(NSDictionary dictionary) : v_(std::make_shared<const NSDictionary>(std::move(dictionary))) {}

bool Id::isNil() const
{
    if (std::holds_alternative<std::monostate>(v_))
        return true;
    if (const PlistValue* value = plist())
        return value->isNil();
    if (const UIImage* picture = image())
        return picture->isNil();
    if (auto view = std::get_if<QPointer<QWidget>>(&v_))
        return view->isNull();
    return false;
}

std::optional<UIColor> Id::color() const
{
    if (const PlistValue* value = plist(); value && value->asColor())
        return *value->asColor();
    return std::nullopt;
}

const ObjCClass* Id::cls() const
{
    auto found = std::get_if<const ObjCClass*>(&v_);
    return found ? *found : nullptr;
}

QWidget* Id::view() const
{
    auto found = std::get_if<QPointer<QWidget>>(&v_);
    return found ? found->data() : nullptr;
}

std::shared_ptr<PSSpecifier> Id::specifier() const
{
    auto found = std::get_if<std::shared_ptr<PSSpecifier>>(&v_);
    return found ? *found : nullptr;
}

const NSArray* Id::array() const
{
    auto found = std::get_if<std::shared_ptr<const NSArray>>(&v_);
    return found ? found->get() : nullptr;
}

const NSDictionary* Id::dictionary() const
{
    auto found = std::get_if<std::shared_ptr<const NSDictionary>>(&v_);
    return found ? found->get() : nullptr;
}

bool Id::operator==(const Id& other) const
{
    if (isNil() || other.isNil())
        return isNil() == other.isNil();
    if (plist() && other.plist())
        return *plist() == *other.plist();
    if (image() && other.image())
        return image()->CGImage() == other.image()->CGImage();
    if (array() && other.array())
        return *array() == *other.array();
    if (dictionary() && other.dictionary())
        return *dictionary() == *other.dictionary();
    if (cls() || other.cls())
        return cls() == other.cls();
    if (view() || other.view())
        return view() == other.view();
    return specifier() == other.specifier();
}

NSDictionary::NSDictionary(std::initializer_list<Entry> entries)
{
    for (const Entry& entry : entries)
        set(entry.first, entry.second);
}

const Id* NSDictionary::find(std::string_view key) const
{
    for (const Entry& entry : entries_)
        if (entry.first == key)
            return &entry.second;
    return nullptr;
}

Id NSDictionary::value(std::string_view key) const
{
    const Id* found = find(key);
    return found ? *found : Id();
}

void NSDictionary::set(std::string_view key, Id value)
{
    if (value.isNil()) {
        remove(key);
        return;
    }
    for (Entry& entry : entries_)
        if (entry.first == key) {
            entry.second = std::move(value);
            return;
        }
    entries_.emplace_back(std::string(key), std::move(value));
}

void NSDictionary::remove(std::string_view key)
{
    std::erase_if(entries_, [&](const Entry& entry) { return entry.first == key; });
}

NSDictionary IdCast<NSDictionary>::from(const Id& id)
{
    if (const NSDictionary* dictionary = id.dictionary())
        return *dictionary;
    NSDictionary result;
    if (const PlistValue* value = id.plist(); value && value->asDict())
        for (const PlistDict::Entry& entry : *value->asDict())
            result.set(entry.key, Id(entry.value));
    return result;
}

Id IdCast<NSDictionary>::to(const NSDictionary& value)
{
    return Id(value);
}

EntryTable IdCast<EntryTable>::from(const Id& id)
{
    EntryTable table;
    if (const NSArray* array = id.array())
        for (const Id& item : *array)
            table.push_back(IdCast<NSDictionary>::from(item));
    if (const PlistValue* value = id.plist(); value && value->asArray())
        for (const PlistValue& item : *value->asArray())
            table.push_back(IdCast<NSDictionary>::from(Id(item)));
    return table;
}

Id IdCast<EntryTable>::to(const EntryTable& table)
{
    NSArray array;
    for (const NSDictionary& entry : table)
        array.emplace_back(entry);
    return Id(std::move(array));
}

std::vector<std::string> IdCast<std::vector<std::string>>::from(const Id& id)
{
    std::vector<std::string> result;
    auto take = [&](const PlistValue& value) {
        if (const std::string* text = value.asString())
            result.push_back(*text);
    };
    if (const PlistValue* value = id.plist(); value && value->asArray())
        for (const PlistValue& item : *value->asArray())
            take(item);
    if (const NSArray* array = id.array())
        for (const Id& item : *array)
            if (item.plist())
                take(*item.plist());
    return result;
}

Id IdCast<std::vector<std::string>>::to(const std::vector<std::string>& value)
{
    PlistArray array(value.begin(), value.end());
    return Id(PlistValue(std::move(array)));
}

namespace {

std::mutex registryMutex;
std::map<std::string, const ObjCClass*, std::less<>>& registry()
{
    static std::map<std::string, const ObjCClass*, std::less<>> classes;
    return classes;
}

} // namespace

const ObjCClass::Method* ObjCClass::methodForSelector(std::string_view selector) const
{
    for (const ObjCClass* cls = this; cls; cls = cls->superclass_) {
        auto found = cls->methods_.find(std::string(selector));
        if (found != cls->methods_.end())
            return &found->second;
    }
    return nullptr;
}

bool ObjCClass::isSubclassOfClass(const ObjCClass& other) const
{
    for (const ObjCClass* cls = this; cls; cls = cls->superclass_)
        if (cls == &other)
            return true;
    return false;
}

PSTableCell* ObjCClass::createCell(int style, const std::string& reuseIdentifier,
                                   std::shared_ptr<PSSpecifier> specifier) const
{
    return makeCell_ ? makeCell_(style, reuseIdentifier, std::move(specifier)) : nullptr;
}

const ObjCClass* ObjCClass::named(std::string_view name)
{
    std::lock_guard lock(registryMutex);
    auto found = registry().find(name);
    return found == registry().end() ? nullptr : found->second;
}

void ObjCClass::registerClass(const ObjCClass* cls)
{
    std::lock_guard lock(registryMutex);
    registry()[cls->name()] = cls;
}

const ObjCClass& NSObject::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<NSObject>("NSObject", nullptr).build();
    return cls;
}

const ObjCClass& NSObject::isa() const
{
    return staticClass();
}

Id NSObject::performSelector(std::string_view selector, const std::vector<Id>& arguments)
{
    const ObjCClass::Method* method = isa().methodForSelector(selector);
    return method ? (*method)(*this, arguments) : Id();
}
