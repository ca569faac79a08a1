#pragma once

#include "platform/core/UIImage.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class ObjCClass;

// The component's bundle: pictures and string tables in a resource folder (":/bundle" in the
// application; tests may point it at a folder of their own).
class NSBundle {
public:
    explicit NSBundle(std::string folder);

    // The bundle of the component's own classes; every class of the component lives in it.
    static NSBundle& mainBundle();
    static NSBundle& bundleForClass(const ObjCClass& cls);

    const std::string& folder() const { return folder_; }
    void setFolder(std::string folder);

    // The picture of that name ("heart.png" or "heart"): the variant for the main screen's
    // scale (name@2x, name@3x, or the plain file), else the nearest one there is; nil when
    // the bundle has none.
    UIImage imageNamed(std::string_view name) const;

    // The text for the key in the table (nothing or "" means "Localizable") of the user's
    // language, else of English; else `value`, or the key when `value` is empty.
    std::string localizedStringForKey(const std::string& key, const std::string& value,
                                      const std::string& table = {}) const;

    // The languages asked for first (tests; empty means the user's locale).
    static void setPreferredLanguages(std::vector<std::string> languages);
    // The language whose table is used: the first preferred one the bundle has, else "en".
    std::string chosenLanguage(const std::string& table = {}) const;

private:
    using Table = std::map<std::string, std::string>;
    const Table* table(const std::string& language, const std::string& name) const;

    std::string folder_;
    mutable std::map<std::string, std::optional<Table>> tables_;
};
