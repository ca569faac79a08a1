#include "PSSpecifier.h"

std::shared_ptr<PSSpecifier> PSSpecifier::preferenceSpecifierNamed(std::string name, NSObject* target,
                                                                   std::string setter, std::string getter,
                                                                   const ObjCClass* detail, PSCellType cell,
                                                                   const ObjCClass* edit)
{
    auto specifier = std::make_shared<PSSpecifier>();
    specifier->name_ = std::move(name);
    specifier->target_ = target;
    specifier->setter_ = std::move(setter);
    specifier->getter_ = std::move(getter);
    specifier->detail_ = detail;
    specifier->cellType_ = cell;
    specifier->edit_ = edit;
    return specifier;
}

std::shared_ptr<PSSpecifier> PSSpecifier::groupSpecifierWithName(std::string name)
{
    auto specifier = emptyGroupSpecifier();
    specifier->name_ = std::move(name);
    return specifier;
}

std::shared_ptr<PSSpecifier> PSSpecifier::emptyGroupSpecifier()
{
    return std::make_shared<PSSpecifier>();
}

std::string PSSpecifier::identifier() const
{
    if (const std::string* text = propertyForKey("id").string())
        return *text;
    return name_;
}

void PSSpecifier::setValuesTitles(PlistArray values, PlistArray titles)
{
    values_ = std::move(values);
    titles_ = std::move(titles);
}

std::vector<std::pair<PlistValue, std::string>> PSSpecifier::titleDictionary() const
{
    std::vector<std::pair<PlistValue, std::string>> result;
    for (std::size_t i = 0; i < values_.size(); ++i) {
        const std::string* title = i < titles_.size() ? titles_[i].asString() : nullptr;
        result.emplace_back(values_[i], title ? *title : std::string());
    }
    return result;
}

void PSSpecifier::setTitleDictionary(const std::vector<std::pair<PlistValue, std::string>>& titles)
{
    values_.clear();
    titles_.clear();
    for (const auto& [value, title] : titles) {
        values_.push_back(value);
        titles_.emplace_back(title);
    }
}

std::optional<std::string> PSSpecifier::titleForValue(const PlistValue& value) const
{
    for (std::size_t i = 0; i < values_.size() && i < titles_.size(); ++i) {
        bool same = values_[i] == value
            || (values_[i].isNumber() && value.isNumber() && values_[i].doubleValue() == value.doubleValue());
        if (same && titles_[i].asString())
            return *titles_[i].asString();
    }
    return std::nullopt;
}

const Id& PSSpecifier::propertyForKey(std::string_view key) const
{
    static const Id nil;
    const Id* found = properties_.find(key);
    return found ? *found : nil;
}
