#pragma once

#include "web/dom/CSSProperty.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The declarations of an element's style attribute, as element.style shows and edits them. Only
// the properties of CSSPropertyID are kept; 'font' is kept as its longhands and put back
// together when all of them are there.
class InlineStyle {
public:
    // Replaces the declarations with those of a style attribute's text; invalid ones are dropped.
    void parse(std::string_view text);
    // The declarations as a style attribute's text: "color: rgb(0, 255, 0); font-size: 30px;".
    std::string cssText() const;

    // The kept value of a longhand.
    std::optional<std::string> value(CSSPropertyID id) const;
    // getPropertyValue(): "" when the property is not set (or not known).
    std::string propertyValue(std::string_view name) const;
    // setProperty(): an empty value removes the declaration; an invalid value or an unknown
    // property changes nothing. Whether anything changed.
    bool setProperty(std::string_view name, std::string_view value);
    // removeProperty(): the value it had ("" if none).
    std::string removeProperty(std::string_view name);

    // The longhands that are set, in order, for length and item().
    std::size_t length() const { return declarations_.size(); }
    std::string_view item(std::size_t index) const;
    const std::vector<std::pair<CSSPropertyID, std::string>>& declarations() const { return declarations_; }

private:
    void set(CSSPropertyID id, std::string value);
    bool remove(CSSPropertyID id);

    std::vector<std::pair<CSSPropertyID, std::string>> declarations_;
};
